#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <string>

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

TEST_F(FilesTest, MakesOneLevelOfFolders) {
    EXPECT_FALSE(MakeFolder(At("a/b")));
    EXPECT_TRUE(MakeFolder(At("a")));
    EXPECT_TRUE(MakeFolder(At("a")));
    EXPECT_TRUE(MakeCompressedFolder(folder_.path() + QStringLiteral("\\a\\b")));
    EXPECT_TRUE(IsFolder(At("a/b")));
    ASSERT_TRUE(WriteWholeFile(At("file"), QByteArrayView("x")));
    EXPECT_FALSE(MakeFolder(At("file")));
}

TEST(SharedMemory, HoldersSeeTheSameBlock) {
    const std::string name = "/pg-test-" + std::to_string(getpid());
    const auto open = [&name](size_t bytes) { return SharedMemory::CreateOrOpen(name.c_str(), bytes); };
    const auto byte = [](const auto& block, int at) -> uint8_t& {
        return static_cast<uint8_t*>(block->Data())[at];
    };
    auto first = open(6152);
    ASSERT_TRUE(first && first->Data());
    EXPECT_EQ(byte(first, 6151), 0);
    byte(first, 6151) = 7;
    const auto second = open(6152);
    ASSERT_TRUE(second && second->Data());

    // The name and what is in it outlive a holder; a smaller request doesn't shrink the block.
    first.reset();
    EXPECT_TRUE(open(16));
    EXPECT_EQ(byte(second, 6151), 7);
    const auto larger = open(20000);
    ASSERT_TRUE(larger && larger->Data());
    EXPECT_EQ(byte(larger, 6151), 7);
    EXPECT_EQ(byte(larger, 19999), 0);
    shm_unlink(name.c_str());

    EXPECT_FALSE(SharedMemory::CreateOrOpen("/no/such/name", 16));
}

}  // namespace
}  // namespace pixelgrove
