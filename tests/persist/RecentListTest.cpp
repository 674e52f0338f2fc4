#include "persist/RecentList.h"

#include <gtest/gtest.h>

#include "support/ImageTestSupport.h"

namespace pixelgrove {
namespace {

class RecentListTest : public ImageFileTest {
  protected:
    QString Make(const QString& name) {
        const QString path = dir.filePath(name);
        EXPECT_TRUE(WriteBytes(path, ""));
        return path;
    }
};

TEST_F(RecentListTest, PushMovesToTheTopAndDropsTheOldest) {
    StringList list;
    const QString first = Make(QStringLiteral("first")), other = Make(QStringLiteral("FIRST"));
    EXPECT_TRUE(PushRecent(&list, first));
    EXPECT_TRUE(PushRecent(&list, dir.path()));
    EXPECT_TRUE(PushRecent(&list, other));
    EXPECT_EQ(list.entries, QStringList({other, dir.path()}));
    EXPECT_TRUE(PushRecent(&list, list.entries[1]));
    EXPECT_EQ(list.entries, QStringList({dir.path(), other}));

    EXPECT_FALSE(PushRecent(&list, Path("missing")));
    EXPECT_FALSE(PushRecent(&list, QString()));
    EXPECT_FALSE(PushRecent(nullptr, first));
    EXPECT_EQ(list.entries.size(), 2);

    for (int i = 0; i < 9; ++i)
        EXPECT_TRUE(PushRecent(&list, Make(QString::number(i))));
    EXPECT_EQ(list.entries.size(), StringList::kCapacity);
    EXPECT_EQ(list.entries.front(), dir.filePath(QStringLiteral("8")));
    EXPECT_EQ(list.entries.back(), dir.path());
}

TEST_F(RecentListTest, MergesWhatTwoInstancesOpened) {
    const struct {
        const char *own, *stored, *base, *merged;  // a letter a path, newest first
    } rows[] = {
        {"", "", "", ""},           {"ab", "cd", "", "abcd"},
        {"ab", "ab", "ab", "ab"},   {"xab", "yab", "ab", "xyab"},
        {"ab", "yab", "ab", "yab"}, {"cab", "bac", "abc", "cba"},
        {"xab", "b", "ab", "xab"},  {"abcdefghij", "klabcdefgh", "abcdefghij", "klabcdefgh"},
        {"xab", "XAB", "", "xab"},  {"abcdefghij", "k", "", "abcdefghij"},
    };
    const auto list = [](const char* letters) {
        return QString::fromLatin1(letters).split(QString(), Qt::SkipEmptyParts);
    };
    for (const auto& row : rows)
        EXPECT_EQ(MergeRecent(list(row.own), list(row.stored), list(row.base)).join(QString()),
                  QLatin1String(row.merged))
            << row.own << ' ' << row.stored;
}

}  // namespace
}  // namespace pixelgrove
