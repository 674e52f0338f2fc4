#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileLock.h"
#include "platform/Files.h"
#include "platform/SharedMemory.h"

namespace pixelgrove {
namespace {

class FilesTest : public testing::Test {
  protected:
    QString At(const char* name) const { return folder_.path() + u'/' + QLatin1String(name); }
    QTemporaryDir folder_;
};

TEST_F(FilesTest, WritesReadsAndReplaces) {
    const QByteArray first = QByteArray("a\0b\r\n\xff", 6).repeated(50000);
    ASSERT_TRUE(WriteWholeFile(At("x.bin"), first));
    EXPECT_EQ(ReadWholeFile(At("x.bin")), first);
    ASSERT_TRUE(WriteWholeFile(folder_.path() + QStringLiteral("\\x.bin"), QByteArrayView("new")));
    EXPECT_EQ(ReadWholeFile(At("x.bin")), QByteArray("new"));
    ASSERT_TRUE(WriteWholeFile(At("empty"), QByteArrayView()));
    EXPECT_EQ(ReadWholeFile(At("empty")), QByteArray());
    // The helper file of the writing is gone.
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

// A limit on the length of files stands in for a full disk.
TEST_F(FilesTest, FailedWriteKeepsTheOldFile) {
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit limited{10, old.rlim_max};
    for (const qsizetype length : {11, 100000}) {
        ASSERT_TRUE(WriteWholeFile(At("x"), "old"));
        setrlimit(RLIMIT_FSIZE, &limited);
        QString reason;
        EXPECT_FALSE(WriteWholeFile(At("x"), QByteArray(length, 'n'), &reason)) << length;
        setrlimit(RLIMIT_FSIZE, &old);
        EXPECT_EQ(reason, QStringLiteral("File too large"));
        EXPECT_EQ(ReadWholeFile(At("x")), QByteArray("old")) << length;
        EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
    std::signal(SIGXFSZ, oldHandler);
}

TEST_F(FilesTest, ReplacesWhatLinksLeadToAndKeepsTheMode) {
    ASSERT_TRUE(WriteWholeFile(At("x"), "old") && MakeFolder(At("links")));
    ASSERT_EQ(chmod(QFile::encodeName(At("x")).constData(), 0751), 0);
    ASSERT_TRUE(QFile::link(QStringLiteral("../x"), At("links/1")));
    ASSERT_TRUE(QFile::link(At("links/1"), At("2")));
    ASSERT_TRUE(QFile::link(QStringLiteral("links/new"), At("3")));
    ASSERT_TRUE(QFile::link(QStringLiteral("4"), At("4")));
    EXPECT_TRUE(WriteWholeFile(At("2"), "changed"));
    EXPECT_TRUE(WriteWholeFile(At("3"), "made"));
    EXPECT_FALSE(WriteWholeFile(At("4"), "nowhere"));
    struct stat info {};
    ASSERT_EQ(lstat(QFile::encodeName(At("x")).constData(), &info), 0);
    EXPECT_EQ(info.st_mode, mode_t(S_IFREG | 0751));
    EXPECT_EQ(ReadWholeFile(At("x")), QByteArray("changed"));
    EXPECT_EQ(ReadWholeFile(At("links/new")), QByteArray("made"));
    for (const char* link : {"links/1", "2", "3", "4"})
        EXPECT_TRUE(QFileInfo(At(link)).isSymbolicLink()) << link;
}

TEST_F(FilesTest, WritesInPlaceWhereTheFolderIsProtected) {
    constexpr uid_t kNobody = 65534;
    const bool isRoot = geteuid() == 0;
    ASSERT_TRUE(WriteWholeFile(At("x"), QByteArray(100, 'o')) && WriteWholeFile(At("fixed"), "old"));
    if (isRoot) {  // for whom no protection holds
        for (const QString& path : {folder_.path(), At("x"), At("fixed")})
            ASSERT_EQ(chown(QFile::encodeName(path).constData(), kNobody, gid_t(-1)), 0);
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    const QByteArray folder = QFile::encodeName(folder_.path());
    chmod(QFile::encodeName(At("fixed")).constData(), 0444);
    EXPECT_FALSE(WriteWholeFile(At("fixed"), "new")) << "the folder would let it";
    chmod(folder.constData(), 0555);
    QString reason;
    EXPECT_TRUE(WriteWholeFile(At("x"), "new"));
    EXPECT_FALSE(WriteWholeFile(At("fixed"), "new") || WriteWholeFile(At("y"), "new", &reason));
    EXPECT_EQ(reason, QStringLiteral("Permission denied"));
    EXPECT_EQ(ReadWholeFile(At("x")), QByteArray("new"));
    EXPECT_EQ(ReadWholeFile(At("fixed")), QByteArray("old"));
    chmod(folder.constData(), 0755);
    if (isRoot) {
        EXPECT_EQ(seteuid(0), 0);
    }
}

TEST_F(FilesTest, ReadsNoMoreThanAsked) {
    ASSERT_TRUE(WriteWholeFile(At("ten"), QByteArray(10, 'x')));
    EXPECT_TRUE(ReadWholeFile(At("ten"), 10).has_value());
    EXPECT_FALSE(ReadWholeFile(At("ten"), 9).has_value());
    // A file whose size isn't known before reading.
    const auto status = ReadWholeFile(QStringLiteral("/proc/self/status"));
    ASSERT_TRUE(status.has_value());
    EXPECT_TRUE(status->startsWith("Name:"));
    EXPECT_FALSE(ReadWholeFile(QStringLiteral("/proc/self/status"), 5).has_value());
}

TEST_F(FilesTest, RefusesWhatIsNoPlainFile) {
    const QString pipe = At("pipe");
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    ASSERT_TRUE(WriteWholeFile(At("x"), QByteArrayView("x")));
    const QString nul = At("x") + QChar(0) + QStringLiteral(".glsl");
    for (const QString& path : {folder_.path(), At("missing/x"), QStringLiteral("/dev/zero"), pipe, nul}) {
        EXPECT_FALSE(IsPlainFile(path)) << path.toStdString();
        EXPECT_FALSE(ReadWholeFile(path).has_value()) << path.toStdString();
        EXPECT_FALSE(WriteWholeFile(path, QByteArrayView("x"))) << path.toStdString();
    }
    EXPECT_EQ(ReadWholeFile(At("x")), QByteArray("x"));
}

TEST_F(FilesTest, ALockIsHeldByOne) {
    std::optional<FileLock> held = FileLock::Take(At("lock"));
    ASSERT_TRUE(held);
    EXPECT_FALSE(FileLock::Take(At("lock")));
    FileLock moved = *std::move(held);
    held.reset();
    EXPECT_FALSE(FileLock::Take(At("lock"))) << "what was moved from let go";
    EXPECT_FALSE(FileLock::Take(At("missing/lock")));
    EXPECT_FALSE(FileLock::WaitForFolder(At("lock"))) << "no folder";

    std::optional<FileLock> folder = FileLock::WaitForFolder(folder_.path());
    ASSERT_TRUE(folder);
    std::thread other([&] { EXPECT_TRUE(FileLock::WaitForFolder(folder_.path())); });
    folder.reset();
    other.join();
}

TEST(SharedMemory, OnlyABlockOfThisUserAloneIsRead) {
    const std::string name = "/pg-test-" + std::to_string(getpid());
    const auto open = [&name](size_t bytes) { return SharedMemory::CreateOrOpen(name.c_str(), bytes); };
    std::vector<char> bytes(6152);
    auto block = open(bytes.size());
    ASSERT_TRUE(block && block->Read(bytes.data(), bytes.size()));
    EXPECT_EQ(bytes.back(), 0);

    // As another process sees it. The name outlives a holder; a smaller request doesn't shrink the block.
    const int other = shm_open(name.c_str(), O_RDWR, 0);
    ASSERT_EQ(pwrite(other, "7", 1, off_t(bytes.size() - 1)), 1);
    block = open(16);
    ASSERT_TRUE(block && block->Read(bytes.data(), bytes.size()));
    EXPECT_EQ(bytes.back(), '7');
    ASSERT_EQ(ftruncate(other, 100), 0);
    EXPECT_FALSE(block->Read(bytes.data(), bytes.size())) << "cut short";

    ASSERT_EQ(fchmod(other, 0660), 0);
    EXPECT_FALSE(open(16)) << "open to others";
    ASSERT_EQ(fchmod(other, 0600), 0);
    if (geteuid() == 0) {
        ASSERT_EQ(fchown(other, 65534, gid_t(-1)), 0);
        EXPECT_FALSE(open(16)) << "of another user";
    }
    close(other);
    shm_unlink(name.c_str());
    EXPECT_FALSE(SharedMemory::CreateOrOpen("/no/such/name", 16));
    block = SharedMemory::CreatePrivate(16);
    EXPECT_TRUE(block && block->Read(bytes.data(), 16));
}

}  // namespace
}  // namespace pixelgrove
