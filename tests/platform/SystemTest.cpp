#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <csignal>
#include <string>
#include <thread>

#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Random.h"
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

TEST(Clock, DoesNotSleepForPastDeadlines) {
    const int64_t before = CounterNs();
    SleepUntilNs(before - 1);
    SleepUntilNs(INT64_MIN);
    EXPECT_LT(CounterNs() - before, 5'000'000'000);
}

TEST(Clock, ASignalDoesNotShortenTheSleep) {
    struct sigaction action {
    }, old{};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, &old);
    std::atomic<int64_t> slept{0};
    std::thread sleeper([&] {
        const int64_t start = CounterNs();
        SleepUntilNs(start + 120'000'000);
        slept = CounterNs() - start;
    });
    SleepMs(40);
    pthread_kill(sleeper.native_handle(), SIGUSR1);
    sleeper.join();
    sigaction(SIGUSR1, &old, nullptr);
    EXPECT_GE(slept.load(), 120'000'000);
}

TEST(Random, EachBitIsSeenSetAndClear) {
    uint32_t ones = 0, zeros = 0;
    for (int i = 0; i < 64; ++i) {
        const uint32_t bits = SystemRandom32();
        ones |= bits;
        zeros |= ~bits;
    }
    EXPECT_EQ(ones & zeros, 0xFFFFFFFFu);
}

class SharedMemoryTest : public testing::Test {
  protected:
    ~SharedMemoryTest() override { shm_unlink(name_.c_str()); }
    const std::string name_ = "/pg-test-" + std::to_string(getpid());
};

TEST_F(SharedMemoryTest, HoldersSeeTheSameBlock) {
    const auto open = [this](size_t bytes) {
        auto block = SharedMemory::CreateOrOpen(name_.c_str(), bytes);
        EXPECT_TRUE(block && block->Data());
        return block;
    };
    const auto bytesOf = [](const auto& block) { return static_cast<uint8_t*>(block->Data()); };
    auto first = open(6152);
    EXPECT_TRUE(std::all_of(bytesOf(first), bytesOf(first) + 6152, [](uint8_t byte) { return byte == 0; }));
    bytesOf(first)[6151] = 7;
    const auto second = open(6152);
    EXPECT_EQ(bytesOf(second)[6151], 7);

    // The name and what is in it outlive a holder; a smaller request doesn't shrink the block.
    first.reset();
    open(16);
    EXPECT_EQ(bytesOf(second)[6151], 7);
    const auto larger = open(20000);
    EXPECT_EQ(bytesOf(larger)[6151], 7);
    EXPECT_EQ(bytesOf(larger)[19999], 0);
}

TEST_F(SharedMemoryTest, FailuresGiveNullOrNoData) {
    EXPECT_FALSE(SharedMemory::CreateOrOpen("/no/such/name", 16));
    const auto empty = SharedMemory::CreateOrOpen(name_.c_str(), 0);
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->Data(), nullptr);
}

}  // namespace
}  // namespace pixelgrove
