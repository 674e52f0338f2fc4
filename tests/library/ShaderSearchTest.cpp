#include "library/ShaderSearch.h"

#include <gtest/gtest.h>

#include <QDir>

#include "library/CacheNames.h"
#include "library/SearchTerms.h"
#include "platform/Files.h"
#include "support/ScratchFolders.h"

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

QStringList IdsOf(const SearchContext& context) {
    QStringList ids;
    for (const ShaderInfo& record : context.results)
        ids += record.id;
    return ids;
}

TEST(SearchTerms, AllTermsOccurInEitherCase) {
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"", "", true},
        {"  ", "{}", true},
        {"a", "", false},
        {"raymarch", "{\"name\":\"RayMarching\"}", true},
        {"two words", "words before two", true},
        {"\"two words\"", "words before two", false},
        {"\"Two Words\"", "the two words", true},
        {"two \"words be", "two words before", true},  // an open quote holds the rest
        {"two \"be words", "two words before", false},
        {"co\"l o\"r", "x col or x", true},
        {"col \"\"", "col", true},
        {"a\tb", "a b", false},  // only blanks part terms
        {"@[", "`{", false},     // a bit apart, but no letters
        {"\xE9", "\xC9", false},
        {"\xE9", "caf\xE9", true},
        {"key", "no k ey", false},
    };
    for (const auto& [text, json, matches] : rows)
        EXPECT_EQ(MatchSearchTerms(Text(text), json), matches) << text << " in " << json;
    EXPECT_FALSE(MatchSearchTerms(Text("b"), QByteArrayView("a\0b", 3)));
    EXPECT_TRUE(MatchSearchTerms(QString(255, u'a'), QByteArray(255, 'A')));
    EXPECT_FALSE(MatchSearchTerms(QString(256, u'a'), QByteArray(256, 'A')));
}

// The search looks at many places in one go: no place may be left out, and none beyond the ends looked at.
TEST(SearchTerms, EveryPlaceIsLookedAt) {
    for (const QByteArray& term : {QByteArray("x"), QByteArray("_xy["), QByteArray("xyzzyxxyzzyxxyzzyxy")}) {
        const SearchTerms terms(QString::fromLatin1(term));
        for (qsizetype length = term.size(); length < 70; ++length) {
            QByteArray text(length + 2 * term.size(), '-');
            text.replace(0, term.size(), term).replace(term.size() + length, term.size(), term);
            const QByteArrayView inside = QByteArrayView(text).sliced(term.size(), length);
            EXPECT_FALSE(terms.Match(inside)) << length;
            for (qsizetype at = 0; at + term.size() <= length; ++at) {
                QByteArray hit = text;
                hit.replace(term.size() + at, term.size(), term.toUpper());
                EXPECT_TRUE(terms.Match(QByteArrayView(hit).sliced(term.size(), length))) << at;
            }
        }
    }
}

class ShaderSearchTest : public ::testing::Test {
  protected:
    void SetUp() override { MakeDataFolders(); }

    void Put(const QString& name, const QByteArray& bytes) {
        ASSERT_TRUE(WriteWholeFile(CacheRoot() + u'/' + kCacheShaders + u'/' + name, bytes, nullptr,
                                   Durability::System));
    }
    // With a service that answers each query with these bytes.
    bool Run(SearchContext& context, const QByteArray& answer = {}) {
        reports_.clear();
        ++queries_;
        const ShaderService service{ChooseService(Text("http://h"), {}), [&](const QString&) {
                                        FetchResult result;
                                        result.body = answer;
                                        return result;
                                    }};
        return RunSearch(context, service, [this](float fraction) {
            reports_.push_back(fraction);
            return reports_.size() != stopAt_;
        });
    }
    SearchContext Query() const { return NewSearch(Text("query %1").arg(queries_), false); }

    test::ScratchFolders folders_;
    std::vector<float> reports_;
    size_t stopAt_ = 0;
    int queries_ = 0;
};

TEST_F(ShaderSearchTest, TheCacheIsReadWholeAndWhatIsNoAnswerSkipped) {
    SearchContext context = NewSearch(Text("needle"), true);
    EXPECT_FALSE(Run(context));
    EXPECT_EQ(reports_, std::vector<float>());

    Put(Text("abc_5.json"), "{\"a\":\"NEEDLE\"} stray");
    Put(Text("abc_0.json"), "{\"a\":\"none\"} needle");  // behind the text
    Put(Text("big_0.json"), "[\"" + QByteArray(300'000, 'x') + "\",\"needle\"]");
    Put(Text("bad_0.json"), "{\"needle\"");
    Put(Text("err_0.json"), "{\"Error\":\"needle\"}");
    Put(Text("needle.json"), "{\"needle\":1}");  // no shader has that name
    Put(Text("txt_0.txt"), "{\"needle\":1}");
    QDir(CacheRoot()).mkpath(Text("Shaders/dir_0.json"));
    context.results.resize(7);
    EXPECT_TRUE(Run(context));
    QStringList ids = IdsOf(context);
    ids.sort();
    EXPECT_EQ(ids, (QStringList{Text("AbC"), Text("big")}));
    EXPECT_EQ(context.total, 6u);
    EXPECT_EQ(context.done, 4u);
    EXPECT_EQ(reports_.back(), kSearchEnded);
    EXPECT_EQ(context.perPage, 5000u);
}

TEST_F(ShaderSearchTest, AStoppedScanKeepsItsHits) {
    for (int i = 0; i < 250; ++i)
        Put(Text("s%1_0.json").arg(i), "{}");
    SearchContext context = NewSearch(Text("{"), true);
    EXPECT_TRUE(Run(context));
    EXPECT_EQ(context.results.size(), 250u);
    EXPECT_LE(reports_.size(), 102u);  // once for each percent
    stopAt_ = 10;
    EXPECT_TRUE(Run(context));
    EXPECT_EQ(context.total, 250u);
    EXPECT_EQ(context.results.size() + 1, context.done);
    EXPECT_LE(context.done, 25u);
    EXPECT_EQ(reports_.size(), 11u);
    EXPECT_EQ(reports_.back(), kSearchEnded);

    std::stop_source stop;
    const auto stopAtOnce = [&stop](float) { return stop.request_stop(), true; };
    const ShaderService service{{}, [](const QString&) { return FetchResult(); }};
    EXPECT_TRUE(RunSearch(context, service, stopAtOnce, stop.get_token()));
    EXPECT_LE(context.results.size(), 3u);  // a percent
}

TEST_F(ShaderSearchTest, TheServiceNamesShadersOrSaysNothing) {
    struct Row {
        const char* answer;
        bool isShown;
        SearchError error;
        bool isEndReported;
        const char* ids;
    };
    const Row rows[] = {
        {"{\"Shaders\":9,\"Results\":[\"AbC\",\"abc\"]} stray", true, SearchError::None, true, "AbC abc"},
        {"{\"Results\":[]}", true, SearchError::None, true, ""},
        {"{\"Results\":[\"a123456789012345678\",\"a1234567890123456789\"]}", true, SearchError::None, true,
         "a123456789012345678 "},
        {"{\"Shaders\":0}", false, SearchError::None, true, ""},
        {" {\"Error\":\"hidden by the blank\"}", false, SearchError::None, true, ""},
        {"{\"Error\":\"no\"}", false, SearchError::NoJson, true, ""},
        {"<html>", false, SearchError::NoJson, true, ""},
        {"", false, SearchError::NoAnswer, true, ""},
        {"{\"Results\":7}", false, SearchError::None, false, ""},
        {"{,}", false, SearchError::None, false, ""},
    };
    for (const Row& row : rows) {
        SearchContext context = Query();
        context.results.resize(3);
        stopAt_ = 1;  // which an online search doesn't heed
        EXPECT_EQ(Run(context, row.answer), row.isShown) << row.answer;
        EXPECT_EQ(context.error, row.error) << row.answer;
        EXPECT_EQ(context.problem.isEmpty(), row.error == SearchError::None) << row.answer;
        EXPECT_EQ(IdsOf(context).join(u' '), Text(row.ids)) << row.answer;
        EXPECT_EQ(reports_.front(), 0.0f);
        EXPECT_EQ(reports_.back() == kSearchEnded, row.isEndReported) << row.answer;
    }
    SearchContext refused = Query();
    Run(refused, "{\"Error\":\"no\"}");
    EXPECT_TRUE(
        refused.problem.startsWith(QStringLiteral("the service answers \"no\"; that answer is kept in \"")));
    SearchContext broken = Query();
    EXPECT_FALSE(Run(broken, "{\"Results\":[\"abc\",7,\"x\"]}"));
    EXPECT_EQ(IdsOf(broken), (QStringList{Text("abc"), QString(), QString()}));
    // The same text gives the stored answer, whatever the service says by now.
    SearchContext again = NewSearch(Text("query 0"), false);
    EXPECT_TRUE(Run(again, "{\"Results\":[]}"));
    EXPECT_EQ(IdsOf(again), (QStringList{Text("AbC"), Text("abc")}));
    const ShaderService nobody;
    EXPECT_FALSE(RunSearch(again, nobody, [](float) { return true; }));
    EXPECT_EQ(again.results.size(), 0u);
}

}  // namespace
}  // namespace pixelgrove
