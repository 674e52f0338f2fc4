// Which brackets belong together, and what a word may become.
#include "ui/text/Brackets.h"

#include <gtest/gtest.h>

#include "core/CommentMap.h"
#include "ui/text/Completions.h"

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

}  // namespace
}  // namespace pixelgrove
