#include "library/Playlist.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>

#include "library/FolderWalk.h"
#include "platform/Files.h"

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

QString IdsOf(const SearchContext& context) {
    QStringList ids;
    for (const ShaderInfo& record : context.results)
        ids += record.id;
    return ids.join(u',');
}

class PlaylistTest : public ::testing::Test {
  protected:
    QString Path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    QString Put(const char* name, const QByteArray& bytes) const {
        EXPECT_TRUE(WriteWholeFile(Path(name), bytes, nullptr, Durability::System));
        return Path(name);
    }
    QByteArray Bytes(const char* name) const { return ReadWholeFile(Path(name)).value_or("none"); }

    QTemporaryDir folder_;
};

TEST_F(PlaylistTest, LinesAreIds) {
    const QByteArray id20(20, 'a');
    const std::pair<QByteArray, const char*> good[] = {
        {"abc\nAbC\n", "abc,AbC"},
        {"\r\n\n a\r\r\nb\n\rc", " a,b,c"},
        {id20, "aaaaaaaaaaaaaaaaaaaa"},
        {QByteArray("a\0b\n", 4) + "caf\xE9", "a,caf\xE9"},
    };
    for (const auto& [bytes, ids] : good) {
        SearchContext context;
        context.page = 9;
        EXPECT_TRUE(LoadPlaylist(Put("p", bytes), context)) << bytes.constData();
        EXPECT_EQ(IdsOf(context), Text(ids));
        EXPECT_TRUE(context.fromPlaylist && context.local);
        EXPECT_EQ(context.page, 1u);
        EXPECT_EQ(context.perPage, context.results.size());
    }
    // What is no playlist leaves the list as it was; what is a bad one leaves none.
    const std::pair<QByteArray, size_t> bad[] = {
        {"", 2},
        {"\r\n\n", 2},
        {"abc\n" + id20 + "a\n", 0},
        {QByteArray("abc\n\0x\n", 7), 0},
        {QByteArray((8 << 20) + 1, '\n'), 2},
    };
    for (const auto& [bytes, left] : bad) {
        SearchContext context;
        context.results.resize(2);
        EXPECT_FALSE(LoadPlaylist(Put("p", bytes), context)) << bytes.first(5).constData();
        EXPECT_EQ(context.results.size(), left);
        EXPECT_FALSE(LoadPlaylist(Path("missing"), context));
    }
    SearchContext context;
    EXPECT_TRUE(LoadPlaylist(Put("p", QByteArray("XslGRr\r\n").repeated(100'000)), context));
    EXPECT_EQ(context.results.size(), 100'000u);
    EXPECT_EQ(context.results.back().id, Text("XslGRr"));
}

TEST_F(PlaylistTest, WhatIsSavedAndAppendedLoadsInOrder) {
    SearchContext context;
    EXPECT_FALSE(SavePlaylist(Path("p"), context));
    context.results.resize(3);
    EXPECT_FALSE(SavePlaylist(Path("p"), context));  // all of them removed
    EXPECT_FALSE(QFile::exists(Path("p")));
    context.results[0].id = Text("one");
    context.results[2].id = Text("two\xE9");
    EXPECT_TRUE(SavePlaylist(Path("p"), context));
    EXPECT_EQ(Bytes("p"), "one\ntwo\xE9\n");
    EXPECT_TRUE(AppendToPlaylist(Path("p"), {Text("three"), QString(), Text("four")}));
    EXPECT_EQ(Bytes("p"), "one\ntwo\xE9\nthree\r\nfour\r\n");
    EXPECT_TRUE(LoadPlaylist(Path("p"), context));
    EXPECT_EQ(IdsOf(context), Text("one,two\xE9,three,four"));

    EXPECT_TRUE(AppendToPlaylist(Path("new/q"), {Text("one")}));
    EXPECT_EQ(Bytes("new/q"), "one\r\n");
    EXPECT_TRUE(AppendToPlaylist(Put("open", "one"), {Text("two")}));
    EXPECT_EQ(Bytes("open"), "one\r\ntwo\r\n");
    EXPECT_FALSE(AppendToPlaylist(Path("no/parent/q"), {Text("one")}));
    EXPECT_FALSE(AppendToPlaylist(Path("p/q"), {Text("one")}));
    EXPECT_FALSE(AppendToPlaylist(folder_.path(), {Text("one")}));
    EXPECT_FALSE(SavePlaylist(folder_.path(), context));
}

TEST_F(PlaylistTest, AFoldersPlaylistsAreListedByName) {
    EXPECT_EQ(ListPlaylists(Path("missing")).size(), 0u);
    for (const char* name : {"b.playlist", "A.PlayList", "c.playlist.txt", "playlist", "x.list", ".playlist"})
        Put(name, "abc\n");
    QDir(folder_.path()).mkdir(Text("a.playlist"));
    QStringList names;
    for (const PlaylistFile& file : ListPlaylists(folder_.path() + u'/')) {
        names += file.name;
        EXPECT_EQ(file.path, folder_.filePath(file.name));
    }
    EXPECT_EQ(names, (QStringList{Text(".playlist"), Text("A.PlayList"), Text("b.playlist"),
                                  Text("c.playlist.txt")}));
    for (int i = 100; i < 200; ++i)
        Put(qPrintable(Text("b%1.playlist").arg(i)), "abc\n");
    const std::vector<PlaylistFile> files = ListPlaylists(folder_.path());
    EXPECT_EQ(files.size(), 100u);
    EXPECT_EQ(files[2].name, Text("b.playlist"));
    EXPECT_EQ(files[99].name, Text("b196.playlist"));
}

TEST(FolderWalk, OrdersSortByTheirKeysInTurn) {
    constexpr uint64_t kHigh = uint64_t(1) << 32;
    const ListedFile files[] = {
        {Text("b.txt"), 5, 30, false}, {Text("A.txt"), kHigh + 2, 20, false}, {Text("c.Aaa"), 3, 20, false},
        {Text(".zip"), 2, 10, false},  {Text("Folder"), 3, 40, true},
    };
    const std::pair<const char*, const char*> rows[] = {
        {"N", ".zip A.txt b.txt c.Aaa Folder"},   {"-n", "Folder c.Aaa b.txt A.txt .zip"},
        {"EN", ".zip Folder c.Aaa A.txt b.txt"},  {"S", ".zip A.txt c.Aaa Folder b.txt"},
        {"DN", ".zip A.txt c.Aaa b.txt Folder"},  {"-D-N", "Folder b.txt c.Aaa A.txt .zip"},
        {"-GN", "Folder .zip A.txt b.txt c.Aaa"}, {"GEN", "Folder .zip c.Aaa A.txt b.txt"},
        {"- N", ".zip A.txt b.txt c.Aaa Folder"}, {"--N", "Folder c.Aaa b.txt A.txt .zip"},
        {"xyz", "b.txt A.txt c.Aaa .zip Folder"}, {"DDDDDDDDDDDDDDDDN", ".zip A.txt c.Aaa b.txt Folder"},
    };
    for (const auto& [order, expected] : rows) {
        std::vector<ListedFile> sorted(std::begin(files), std::end(files));
        const std::vector<SortKey> keys = ParseSortOrder(Text(order));
        EXPECT_LE(keys.size(), 16u);
        std::stable_sort(sorted.begin(), sorted.end(),
                         [&keys](const ListedFile& first, const ListedFile& second) {
                             return CompareFiles(first, second, keys) < 0;
                         });
        QStringList names;
        for (const ListedFile& file : sorted)
            names += file.name;
        EXPECT_EQ(names.join(u' '), Text(expected)) << order;
    }
}

TEST_F(PlaylistTest, WalksVisitFilesAndEndWhenTold) {
    Put("a.txt", "12");
    Put("b.bin", "1");
    QDir(folder_.path()).mkdir(Text("folder"));
    QFile::link(Path("b.bin"), Path("link"));
    QFile::link(Path("folder"), Path("c"));
    QFile::link(Path("gone"), Path("d"));
    const QString folder = folder_.path();
    const auto walk = [&folder](const char* order, int visits, bool& result) {
        QStringList paths;
        const FileVisitor visit = [&paths, &visits](const WalkedFile& file) {
            paths += file.Path();
            return --visits != 0;
        };
        result = order ? ForEachFileSorted(folder, *order ? Text(order) : QString(), visit)
                       : ForEachFile(folder + Text("//"), visit);
        if (!order) paths.sort();
        return paths.replaceInStrings(folder + u'/', QString()).join(u' ');
    };
    bool result = false;
    EXPECT_EQ(walk(nullptr, 9, result), Text("a.txt b.bin link"));
    EXPECT_TRUE(result);
    EXPECT_EQ(walk("-SN", 9, result), Text("a.txt b.bin link"));
    EXPECT_EQ(walk("", 2, result), Text("link b.bin"));
    EXPECT_FALSE(result);
    EXPECT_EQ(walk(nullptr, 1, result).count(u' '), 0);
    EXPECT_FALSE(result);
    EXPECT_TRUE(ForEachFile(Path("missing"), [](const WalkedFile&) { return false; }));
    EXPECT_TRUE(ForEachFileSorted(Path("missing"), u"N", [](const WalkedFile&) { return false; }));
    EXPECT_FALSE(ForEachFileSorted(QString(), u"N", [](const WalkedFile&) { return true; }));
}

}  // namespace
}  // namespace pixelgrove
