// What a word of the shading language is, in a few lines: the functions of GLSL, what every shader is given
// here, and the types and keywords that have something to say.
//
// Pure; the table is made at its first use. Any thread.
#pragma once

#include <QStringView>
#include <span>

namespace pixelgrove {

struct WordHelp {
    const char* word;
    const char* form;  // how it is called or declared, a line each
    const char* text;  // a sentence or two
};

// Nothing for a word that there is no help for; case counts.
const WordHelp* HelpOf(QStringView word);

// What stands for several types in a form, as "genType" does, a line each; empty for plain types.
QString TypesExplained(QStringView form);

// The parts of the table. Inputs are what a shader is given here without declaring it, and functions that the
// editor doesn't colour.
std::span<const WordHelp> NumberFunctionHelp();
std::span<const WordHelp> TextureFunctionHelp();
std::span<const WordHelp> MemoryFunctionHelp();
std::span<const WordHelp> InputHelp();
std::span<const WordHelp> KeywordHelp();

}  // namespace pixelgrove
