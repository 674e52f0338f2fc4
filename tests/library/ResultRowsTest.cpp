#include "library/ResultRows.h"

#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

SearchContext Results(size_t count, uint32_t perPage) {
    SearchContext context;
    context.perPage = perPage;
    context.results.resize(count);
    for (size_t i = 0; i < count; ++i)
        context.results[i].id = QString::number(i);
    return context;
}

TEST(ResultRows, PagesByStepAndByTextHaveDifferentEnds) {
    struct Row {
        size_t count;
        const char* shown;
        int step;
        uint32_t stepped, typed;
    };
    const Row rows[] = {
        {32, "1", 1, 2, 1},   {32, "2", 1, 2, 2},  {32, "3", -1, 2, 3},
        {32, "4", 0, 2, 3},   {33, "3", 1, 3, 3},  {33, "9", 0, 3, 3},
        {33, "0", -1, 1, 1},  {33, "x", 1, 2, 7},  {33, "", -5, 1, 7},
        {0, "5", 1, 7, 1},    {0, "x", 1, 7, 7},   {1, "1", 1, 1, 1},
        {33, " 2 ", 0, 2, 2}, {33, "2x", 1, 2, 7}, {33, "99999999999", 1, 3, 3},
        {33, "-1", 0, 1, 1},
    };
    for (const Row& row : rows) {
        SearchContext context = Results(row.count, 16);
        context.page = 7;
        EXPECT_EQ(SteppedPage(context, Text(row.shown), row.step), row.stepped) << row.count << row.shown;
        EXPECT_EQ(TypedPage(context, Text(row.shown)), row.typed) << row.count << row.shown;
    }
    EXPECT_EQ(PageCount(Results(0, 10)), 0u);
    EXPECT_EQ(PageCount(Results(32, 16)), 2u);
    EXPECT_EQ(PageCount(Results(33, 16)), 3u);
}

TEST(ResultRows, RemovedRecordsKeepThePagesPlaces) {
    SearchContext context = Results(5, 3);
    EXPECT_EQ(RowsOfPage(context), (std::vector<size_t>{0, 1, 2}));
    RemoveRow(context, 1);
    RemoveRow(context, 5);
    EXPECT_EQ(RowsOfPage(context), (std::vector<size_t>{0, 2}));
    context.page = 2;
    EXPECT_EQ(RowsOfPage(context), (std::vector<size_t>{3, 4}));
    context.page = 3;
    EXPECT_EQ(RowsOfPage(context), std::vector<size_t>());
    EXPECT_EQ(PageCount(context), 2u);
}

TEST(ResultRows, ColumnsSortAndLikesTheOtherWayAbout) {
    SearchContext context = Results(3, 3);
    const std::tuple<const char*, uint32_t, uint32_t, const char*> records[] = {
        {"b", 5, 30, "u"}, {"Z", 7, 10, "U"}, {"\xE9", 6, 20, ""}};
    for (size_t i = 0; i < 3; ++i) {
        ShaderInfo& info = context.results[i];
        const auto& [name, likes, size, user] = records[i];
        info.name = Text(name);
        info.likes = likes;
        info.size = size;
        info.username = Text(user);
    }
    SortState sort;
    std::vector<size_t> rows = {2, 0, 1};
    SortRows(context, sort, rows);
    EXPECT_EQ(rows, (std::vector<size_t>{2, 0, 1}));
    const std::pair<ResultColumn, std::vector<size_t>> clicks[] = {
        {ResultColumn::Likes, {1, 2, 0}}, {ResultColumn::Likes, {0, 2, 1}}, {ResultColumn::Size, {1, 2, 0}},
        {ResultColumn::Size, {0, 2, 1}},  {ResultColumn::Size, {1, 2, 0}},  {ResultColumn::Name, {1, 0, 2}},
        {ResultColumn::User, {2, 1, 0}},  {ResultColumn::Id, {0, 1, 2}},    {ResultColumn::Id, {2, 1, 0}},
    };
    for (const auto& [column, expected] : clicks) {
        ClickColumn(sort, column);
        SortRows(context, sort, rows);
        EXPECT_EQ(rows, expected) << int(column);
    }
}

TEST(ResultRows, CellsSayWhatIsKnown) {
    ShaderInfo info;
    info.id = Text("AbC");
    info.likes = 3;
    EXPECT_EQ(CellText(info, ResultColumn::Id), Text("AbC"));
    EXPECT_EQ(CellText(info, ResultColumn::Likes), Text("<uncached>"));
    info.name = Text("Waves");
    info.size = 0xFFFFFFFF;
    EXPECT_EQ(CellText(info, ResultColumn::Name), Text("Waves"));
    EXPECT_EQ(CellText(info, ResultColumn::Likes), Text("3"));
    EXPECT_EQ(CellText(info, ResultColumn::Size), Text("-1"));
    EXPECT_EQ(CellText(info, ResultColumn::User), Text("<uncached>"));
}

}  // namespace
}  // namespace pixelgrove
