// What a word that is being typed may become: words of the language, inputs, and names that stand in texts.
//
// Pure; any thread. Positions are UTF-16 code units of the text. A comment map has one class byte per code
// unit, as BuildCommentMap makes it.
#pragma once

#include <QSet>
#include <QStringList>
#include <QStringView>
#include <cstdint>
#include <span>

namespace pixelgrove {

// Letters from which a word is completed without being asked.
constexpr qsizetype kCompletedLetters = 3;

// Where the word begins that ends at the caret; the caret without one. Nothing in it is looked at from the
// caret further back than words of the language are long.
qsizetype WordBegin(QStringView text, qsizetype caret);

// False for what begins as a number, or is long beyond names that are worth completing.
bool IsCompletable(QStringView word);

bool IsInComment(QStringView text, std::span<const uint8_t> commentMap, qsizetype caret);

// The names outside comments that begin so, in any case of letters, and are longer; but for the one that
// begins at `except`. Of a huge text only what is near `except` counts.
void AddNames(QStringView text, std::span<const uint8_t> commentMap, QStringView beginning, qsizetype except,
              QSet<QString>& names);

// Those of the language and of what every shader is given.
void AddKnownWords(QStringView beginning, QSet<QString>& names);

// In the order of the alphabet, as a completer wants them that knows no case.
QStringList SortedWords(const QSet<QString>& names);

}  // namespace pixelgrove
