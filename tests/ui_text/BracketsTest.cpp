// Which brackets belong together, what a word may become, and what it is.
#include "ui/text/Brackets.h"

#include <gtest/gtest.h>

#include "core/CommentMap.h"
#include "ui/text/Completions.h"
#include "ui/text/Definitions.h"
#include "ui/text/GlslWords.h"
#include "ui/text/WordHelp.h"

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

// The caret's place is '|'.
TEST(BracketsTest, Pairs) {
    const std::pair<const char*, std::optional<BracketPair>> rows[] = {
        {"|(a)", BracketPair{0, 2}},
        {"(|a)", BracketPair{0, 2}},
        {"(a|)", BracketPair{0, 2}},
        {"(a)|", BracketPair{0, 2}},
        {"(a|b)", std::nullopt},
        {"((|))", BracketPair{1, 2}},
        {"{(}|", BracketPair{0, 2}},
        {"f(x)|[1]", BracketPair{1, 3}},
        {"|{ // }\n}", BracketPair{0, 7}},
        {"{ /* { */ }|", BracketPair{0, 10}},
        {"// (|)", std::nullopt},
        {"(|", std::nullopt},
        {")|", std::nullopt},
        {"|", std::nullopt},
    };
    for (const auto& [marked, expected] : rows) {
        QString text = Text(marked);
        const qsizetype caret = text.indexOf(u'|');
        text.remove(u'|');
        EXPECT_EQ(BracketsAt(text, BuildCommentMap(text), caret), expected) << marked;
        EXPECT_TRUE(!expected || IsBracketBeside(text, caret)) << marked;
    }
    const QString far = u'(' + QString(kBracketReach, u' ') + u')';
    EXPECT_EQ(BracketsAt(far, BuildCommentMap(far), 0), std::nullopt);
}

TEST(CompletionsTest, NamesOfATextAndOfTheLanguage) {
    const QString text =
        Text("#define SMOOTH 1\nfloat smoothing; // smoothComment\nsmo 1smooth smoothing smo");
    const auto words = [&text](const char* beginning, const char* end) {
        QSet<QString> names;
        AddKnownWords(Text(beginning), names);
        AddNames(text, BuildCommentMap(text), Text(beginning), text.size() - qstrlen(end), names);
        return SortedWords(names).join(u' ').toStdString();
    };
    EXPECT_EQ(words("smo", "smo"), "SMOOTH smooth smoothing smoothstep");
    EXPECT_EQ(words("iCh", ""), "iChannel0 iChannel1 iChannel2 iChannel3 iChannelResolution iChannelTime");
    EXPECT_EQ(words("#ifd", ""), "#ifdef");
    EXPECT_EQ(words("nothing", ""), "");
}

TEST(CompletionsTest, WhereAWordIsCompleted) {
    const struct {
        const char* text;
        qsizetype begin;
        bool isCompletable, isInComment;
    } rows[] = {{"a.bcd", 2, true, false}, {"1e5", 0, false, false},     {"a 0x1f", 2, false, false},
                {"// abc", 3, true, true}, {"// abc\n", 7, true, false}, {"/* a */ b", 8, true, false},
                {"/* a\n", 5, true, true}, {"", 0, true, false}};
    for (const auto& row : rows) {
        const QString text = Text(row.text);
        const qsizetype begin = WordBegin(text, text.size());
        EXPECT_EQ(begin, row.begin) << row.text;
        EXPECT_EQ(IsCompletable(QStringView(text).sliced(begin)), row.isCompletable) << row.text;
        EXPECT_EQ(IsInComment(text, BuildCommentMap(text), text.size()), row.isInComment) << row.text;
    }
}

TEST(WordHelpTest, EachFunctionThatIsColouredHasHelp) {
    for (const KeywordRow& row : KeywordRows()) {
        if (row.colour != word_colours::kFunction) continue;
        const WordHelp* help = HelpOf(row.word);
        ASSERT_NE(help, nullptr) << row.word.toStdString();
        for (const QString& form : Text(help->form).split(u'\n'))
            EXPECT_TRUE(form.contains(u' ' + row.word + u'(')) << form.toStdString();
        EXPECT_TRUE(Text(help->text).endsWith(u'.')) << help->word;
    }
    for (const std::span<const WordHelp> part :
         {NumberFunctionHelp(), TextureFunctionHelp(), MemoryFunctionHelp(), InputHelp(), KeywordHelp()})
        for (const WordHelp& row : part)
            EXPECT_EQ(HelpOf(Text(row.word)), &row) << row.word << " stands there twice";
    EXPECT_EQ(HelpOf(u"Mix"), nullptr);
    EXPECT_EQ(TypesExplained(u"genType mix(genType x, genBType a)").count(u'\n'), 1);
}

// The place is '|'.
TEST(WordHelpTest, TheWordAtAPlace) {
    const std::pair<const char*, const char*> rows[] = {
        {"a mi|x(b)", "mix"}, {"|mix(b)", "mix"}, {"mix|(b)", "mix"},        {"mix( | b)", ""},
        {"a.leng|th()", ""},  {"|", ""},          {"#def|ine A", "#define"}, {"a\n|b", "b"}};
    for (const auto& [marked, expected] : rows) {
        QString text = Text(marked);
        const qsizetype place = text.indexOf(u'|');
        const WordPlace word = WordAround(text.remove(u'|'), place);
        EXPECT_EQ(text.sliced(word.start, word.length), Text(expected)) << marked;
    }
    EXPECT_EQ(WordAround(QString(1000000, u'a'), 500000).length, 0);
}

TEST(WordHelpTest, WhatATextDefines) {
    const std::pair<const char*, const char*> rows[] = {
        {"float f(vec2 p) { return f(p); }", "float f(vec2 p)"},
        {"float a; vec3[2]\n  f ( in vec2 p, // it's (x)\n  float b )\n{}",
         "vec3[2] f ( in vec2 p, float b )"},
        {"int f() {} int f(int a) {} int f();", "int f() | int f(int a)"},
        {"#define f(x) ((x)*2) // twice\n f(3);", "#define f(x) ((x)*2)"},
        {"#ifdef A\nint f(){}", "int f()"},
        {"/* int f() {} */ int ff() {} int b = f();", ""},
        {"int f(", ""},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(DefinitionsOf(u"f", Text(text), BuildCommentMap(Text(text)), 0).join(Text(" | ")),
                  Text(expected));
    const QString huge = Text("int f(){} ").repeated(100000);
    EXPECT_EQ(DefinitionsOf(u"f", huge, BuildCommentMap(huge), 0).size(), 1);
}

}  // namespace
}  // namespace pixelgrove
