// Searching in both directions, whole words and case, and the steps of find and replace.
#include "ui/text/TextSearch.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

namespace pixelgrove {
namespace {

constexpr qsizetype kMiss = -1;

TEST(TextSearchTest, NextAndPrevious) {
    const struct {
        const char16_t* text;
        const char16_t* what;
        qsizetype from, next, previous;
    } cases[] = {
        {u"abcabc", u"abc", 0, 0, 0},
        {u"abcabc", u"abc", 1, 3, 0},
        {u"abcabc", u"abc", 3, 3, 3},
        {u"abcabc", u"abc", 4, kMiss, 3},  // a hit may end behind its last start
        {u"abcabc", u"abc", 100, kMiss, 3},
        {u"abcabc", u"abc", -1, kMiss, kMiss},
        {u"aaaa", u"aa", 1, 1, 1},  // hits may overlap
        {u"aabaabaaab", u"aabaaab", 0, 3, kMiss},
        {u"a\nb", u"\n", 0, 1, kMiss},
        {u"ab", u"abc", 0, kMiss, kMiss},
        {u"ab", u"", 0, kMiss, kMiss},
        {u"", u"a", 0, kMiss, kMiss},
        {u"xab", u"ab", 9, kMiss, 1},
    };
    for (const auto& row : cases) {
        const TextSearch search(QString::fromUtf16(row.text), {QString::fromUtf16(row.what), true, false});
        SCOPED_TRACE(testing::Message()
                     << QString::fromUtf16(row.what).toStdString() << " from " << row.from);
        EXPECT_EQ(search.Next(row.from).value_or(kMiss), row.next);
        EXPECT_EQ(search.Previous(row.from).value_or(kMiss), row.previous);
    }
}

TEST(TextSearchTest, CaseAndWords) {
    const struct {
        const char16_t* text;
        const char16_t* what;
        bool matchCase, wholeWord;
        qsizetype first, last;
    } cases[] = {
        {u"Uv uv UV", u"uv", false, false, 0, 6},
        {u"Uv uv UV", u"uv", true, false, 3, 3},
        {u"uv2 _uv a.uv;uvw", u"uv", false, true, 10, 10},
        {u"uv", u"uv", false, true, 0, 0},
        {u"UV uv.x", u"uv", true, true, 3, 3},
        {u"a+=b c +=", u"+=", false, true, 1, 7},  // no word that could go on beside it
        {u"aaa a", u"a", false, true, 4, 4},
        {u"a\u0301 a", u"a", false, true, 3, 3},                  // with an accent that combines
        {u"\U00020000x x\U00020000 x", u"x", false, true, 8, 8},  // letters of two units
        // One letter's other case, and its fold, may be two letters: that must not shift what is behind it.
        {u"\u0130\u00DF\u1E9E\uFB01\u0149 end", u"END", false, false, 6, 6},
        {u"\u03A3\u03C3\u03C2", u"\u03C3", false, false, 0, 2},  // three forms of sigma
        {u"stra\u00DFe", u"STRASSE", false, false, kMiss, kMiss},
        {u"\U00010428 \U00010400", u"\U00010400", false, false, 0, 3},
        {u"\U00010428 \U00010400", u"\U00010400", true, false, 3, 3},
    };
    for (const auto& row : cases) {
        const QString text = QString::fromUtf16(row.text);
        const TextSearch search(text, {QString::fromUtf16(row.what), row.matchCase, row.wholeWord});
        SCOPED_TRACE(text.toStdString() + " / " + QString::fromUtf16(row.what).toStdString());
        EXPECT_EQ(search.Next(0).value_or(kMiss), row.first);
        EXPECT_EQ(search.Previous(text.size()).value_or(kMiss), row.last);
    }
}

// Against the toolkit's own search, on texts of few letters, where much repeats.
TEST(TextSearchTest, AgreesWithAPlainSearch) {
    uint32_t random = 1;
    const auto letters = [&random](int most) {
        QString text;
        random = random * 1664525 + 1013904223;
        for (int left = int(random >> 16) % (most + 1); left > 0; --left) {
            random = random * 1664525 + 1013904223;
            text += QChar(u"aAb"[(random >> 16) % 3]);
        }
        return text;
    };
    for (int round = 0; round < 3000; ++round) {
        const QString text = letters(24), what = letters(5) + u'a';
        const bool matchCase = round % 2 == 0;
        const Qt::CaseSensitivity sensitivity = matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const TextSearch search(text, {what, matchCase, false});
        for (qsizetype from = 0; from <= text.size(); ++from) {
            ASSERT_EQ(search.Next(from).value_or(kMiss), text.indexOf(what, from, sensitivity))
                << text.toStdString() << " / " << what.toStdString() << " from " << from;
            qsizetype last = kMiss;
            for (qsizetype start = from; start >= 0 && last < 0; --start)
                if (text.mid(start, what.size()).compare(what, sensitivity) == 0) last = start;
            ASSERT_EQ(search.Previous(from).value_or(kMiss), last)
                << text.toStdString() << " / " << what.toStdString() << " from " << from;
        }
    }
}

TEST(TextSearchTest, StepsLeaveTheSelectionAndWrapAround) {
    const QString text = QStringLiteral("ab ab ab");
    const struct {
        qsizetype selection;
        bool down, wrap;
        qsizetype hit;
    } cases[] = {
        {0, true, true, 3},  // also from a mere caret
        {3, true, false, 6},      {6, true, true, 0},   {6, true, false, kMiss},
        {8, true, true, 0},  // one behind the end
        {6, false, true, 3},      {3, false, false, 0}, {0, false, true, 6},
        {0, false, false, kMiss}, {8, false, false, 6},
    };
    for (const auto& row : cases) {
        const FindRequest request{{QStringLiteral("AB")}, row.down, row.wrap};
        EXPECT_EQ(FindNextHit(text, request, row.selection).value_or(kMiss), row.hit)
            << row.selection << (row.down ? " down" : " up") << (row.wrap ? ", wrapping" : "");
    }
    EXPECT_EQ(FindNextHit(text, {{QStringLiteral("ac")}}, 0), std::nullopt);
    // The only hit is found from itself.
    EXPECT_EQ(FindNextHit(QStringLiteral("x ab"), {{QStringLiteral("ab")}}, 2), 2);
}

TEST(TextSearchTest, AllHitsStandApart) {
    EXPECT_EQ(FindAllHits(QStringLiteral("aaaaa"), {QStringLiteral("aa")}), (std::vector<qsizetype>{0, 2}));
    EXPECT_EQ(FindAllHits(QStringLiteral("a ab a"), {QStringLiteral("A"), false, true}),
              (std::vector<qsizetype>{0, 5}));
    EXPECT_TRUE(FindAllHits(QStringLiteral("a"), {}).empty());
}

TEST(TextSearchTest, RepetitionCostsNoTime) {
    const QString text(2000000, u'a');
    const QString what(kMaxSearchText, u'a');
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(FindNextHit(text, {{u'b' + what}}, 0), std::nullopt);
    EXPECT_EQ(FindNextHit(text, {{what + u'b'}, false}, text.size()), std::nullopt);
    EXPECT_EQ(FindNextHit(text, {{what, false, true}}, 0), std::nullopt);
    EXPECT_EQ(FindNextHit(text, {{what, false, true}, false}, text.size()), std::nullopt);
    EXPECT_EQ(FindAllHits(text, {what}).size(), 488u);
    EXPECT_LT(timer.elapsed(), 3000);
}

TEST(TextSearchTest, LineEndsAndLengths) {
    EXPECT_EQ(WithLineFeeds(QString::fromUtf16(u"a\r\nb\rc\u2029d\u2028e\n\u00A0")),
              QString::fromUtf16(u"a\nb\nc\nd\ne\n\u00A0"));
    EXPECT_FALSE(BecomesFindText(0));
    EXPECT_TRUE(BecomesFindText(1));
    EXPECT_TRUE(BecomesFindText(4094));
    EXPECT_FALSE(BecomesFindText(4095));
}

}  // namespace
}  // namespace pixelgrove
