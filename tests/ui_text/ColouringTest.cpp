// The keyword table and the colouring pass.
#include "ui/text/Colouring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/CommentMap.h"
#include "ui/text/GlslWords.h"

namespace pixelgrove {
namespace {

using namespace word_colours;

Colouring Pass(const QString& text, qsizetype start = 0, qsizetype end = -1) {
    return ColourText(text, BuildCommentMap(text), start, end);
}

// The coloured stretches with a letter for each colour: "t:vec2 c:// x".
std::string Describe(const QString& text, const Colouring& colouring) {
    const std::map<uint32_t, char> letters = {{kPrecision, 'p'}, {kPreprocessor, '#'}, {kType, 't'},
                                              {kQualifier, 'q'}, {kFunction, 'f'},     {kComment, 'c'}};
    std::string words;
    for (const ColourSpan& span : colouring.spans) {
        if (!words.empty()) words += ' ';
        words += letters.at(span.colour);
        words += ':' + text.sliced(span.start, span.end - span.start).toStdString();
    }
    return words;
}

std::string Describe(const QString& text, qsizetype start = 0, qsizetype end = -1) {
    return Describe(text, Pass(text, start, end));
}

TEST(GlslWordsTest, EveryWordOfTheTableIsFound) {
    EXPECT_EQ(std::ranges::adjacent_find(KeywordRows(), std::ranges::greater_equal(), &KeywordRow::word),
              KeywordRows().end())
        << "ascending, and none twice";
    for (const KeywordRow& row : KeywordRows())
        EXPECT_EQ(WordColour(row.word), row.colour) << row.word.toStdString();
    for (const QString& word : {QStringLiteral("Vec3"), QStringLiteral("vec"), QStringLiteral("vec33"),
                                QStringLiteral("#include"), QString(), QStringLiteral("zzz")})
        EXPECT_EQ(WordColour(word), std::nullopt) << word.toStdString();
}

TEST(ColouringTest, WordsAndComments) {
    const std::pair<QString, const char*> rows[] = {
        {QStringLiteral("precision highp float;"), "p:precision p:highp t:float"},
        {QStringLiteral("#define A 1.0"), "#:#define"},
        {QStringLiteral("# define a#if float_ _int 2D vec2"), "t:vec2"},
        {QStringLiteral("in vec2,uv=sin(x)+mod"), "q:in t:vec2 f:sin f:mod"},
        {QStringLiteral("float//x"), "t:float c://x"},
        {QStringLiteral("float/*x*/int"), "t:float c:/*x*/ t:int"},
        {QStringLiteral("abc/*x*/int"), "c:/*x*/ t:int"},
        {QStringLiteral("// a /* b\nint // c */\nint"), "c:// a /* b\n t:int c:// c */\n t:int"},
        {QStringLiteral("/* // */ int"), "c:/* // */ t:int"},
        {QStringLiteral("/*/ int"), "c:/*/ int"},
        {QStringLiteral("int /* float\nvec2"), "t:int c:/* float\nvec2"},
        {QStringLiteral("// a\n// b\nint"), "c:// a\n// b\n t:int"},
        {QStringLiteral("\"/*\" int"), "c:/*\" int"},
        {QStringLiteral("\u00E9int int\u00E9 int"), "t:int"},
        {QStringLiteral("a / int *float"), "t:int t:float"},
        {QString(63, u'x') + QStringLiteral(" int"), "t:int"},
        {QString(64, u'x') + QStringLiteral(" int"), "t:int"},
        {QString(100000, u'i') + QStringLiteral(" int"), "t:int"},
        {QString(), ""},
        {QString(5, QChar(0)), ""},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(Describe(text), expected) << text.left(80).toStdString();
}

TEST(ColouringTest, APartOfTheText) {
    const QString text = QStringLiteral("int a; /* two\nlines */ vec2 b; vec3 c;");
    EXPECT_EQ(Describe(text, 2, 7), "") << "the rest of a word is another word";
    EXPECT_EQ(Describe(text, 4, 8), "c:/* two\nlines */") << "a comment goes on behind the end";
    EXPECT_EQ(Describe(text, 14, 25), "c:lines */ t:vec2")
        << "one that was open before the start, and a word";
    EXPECT_EQ(Describe(text, 30, 9999), "t:vec3");
    EXPECT_EQ(Describe(text, 20, 10), "");
    EXPECT_EQ(Describe(text, -5, 3), "t:int");
}

TEST(ColouringTest, SpanOfWordsThatMayBeControls) {
    const QString text = QStringLiteral("int a; uniform float b; // uniform\n#define C uniformx\n// #define");
    const Colouring all = Pass(text);
    EXPECT_EQ(text.sliced(all.changedStart, all.changedEnd - all.changedStart),
              QStringLiteral("uniform float b; // uniform\n#define"));
    EXPECT_TRUE(all.HasControlWords());
    EXPECT_FALSE(Pass(text, 0, 6).HasControlWords());
    EXPECT_FALSE(Pass(QStringLiteral("// uniform\n/* #define */ uniforms")).HasControlWords());
}

TEST(ColouringTest, AMapThatIsTooShortIsNotOverrun) {
    const QString text = QStringLiteral("int float vec2");
    const std::vector<uint8_t> map(5, 0);
    EXPECT_EQ(Describe(text, ColourText(text, map, 0, -1)), "t:int");
}

}  // namespace
}  // namespace pixelgrove
