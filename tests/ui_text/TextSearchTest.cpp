// Searching in both directions, whole words and case.
#include "ui/text/TextSearch.h"

#include <gtest/gtest.h>

#include "support/CpuTime.h"

namespace pixelgrove {
namespace {

constexpr qsizetype kMiss = -1;

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

TEST(TextSearchTest, OutsideTheText) {
    const TextSearch search(QStringLiteral("abcabc"), {QStringLiteral("abc")});
    EXPECT_EQ(search.Next(100), std::nullopt);
    EXPECT_EQ(search.Previous(100), 3);
    EXPECT_EQ(search.Next(-1).value_or(kMiss) + search.Previous(-1).value_or(kMiss), 2 * kMiss);
    EXPECT_EQ(TextSearch(QStringLiteral("ab"), {}).Next(0), std::nullopt);
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

TEST(TextSearchTest, RepetitionCostsNoTime) {
    const QString text(2000000, u'a');
    const QString what(kMaxSearchText, u'a');
    const int start = test::ThreadCpuMs();
    EXPECT_EQ(FindNextHit(text, {{u'b' + what}}, 0), std::nullopt);
    EXPECT_EQ(FindNextHit(text, {{what + u'b'}, false}, text.size()), std::nullopt);
    EXPECT_EQ(FindNextHit(text, {{what, false, true}}, 0), std::nullopt);
    EXPECT_EQ(FindNextHit(text, {{what, false, true}, false}, text.size()), std::nullopt);
    EXPECT_EQ(FindAllHits(text, {what}).size(), 488u);
    EXPECT_LT(test::ThreadCpuMs() - start, 3000);
}

}  // namespace
}  // namespace pixelgrove
