// The desktop's sound from a real server to the bytes of the sound texture, and what happens without one.
#include "capture/AudioCapture.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <QDir>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>
#include <numbers>
#include <optional>
#include <thread>
#include <utility>

#include "capture/DesktopSound.h"
#include "media/LiveFeeds.h"
#include "support/SoundServer.h"

namespace pixelgrove {
namespace {

using test::Child;
using test::SoundServer;
using test::WaitUntil;

constexpr const char* kStereo = "format=s16le rate=48000 channels=2";

// Sound servers of a test's own; without the program for them it is skipped.
class SoundTest : public testing::Test {
  protected:
    void Serve(const char* output) {
        server_.reset();
        server_.emplace(output);
        if (!server_->IsInstalled()) GTEST_SKIP() << "skipped: pulseaudio is not installed";
        ASSERT_TRUE(server_->IsReady());
    }
    void TearDown() override {
        while (users_ > 0)
            Stop();
    }

    // Every block for itself, so that a tone stands there from its first on.
    static bool Start() {
        const auto parameters = std::make_shared<AudioParameters>();
        parameters->smoothingWeight = 0;
        parameters->noiseLevel = 0;
        parameters->homingFactor = 0.9;
        users_ += StartAudioCapture(parameters);
        return users_ > 0;
    }
    static void Stop() {
        StopAudioCapture();
        --users_;
    }
    static int Threads() {
        return int(
            QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
    }
    // Whether the tone stands out of the columns around it, in a block from after this call.
    static bool Hears(double frequency) {
        PublishAudioBlock({});
        const int column = int(std::lround(frequency * kAudioColumns / 20000.0));
        return WaitUntil([column] {
            const AudioBlock block = LatestAudioBlock();
            const int first = std::max(column - 40, 0), last = std::min(column + 40, kAudioColumns - 1);
            const auto top = std::max_element(block.begin() + first, block.begin() + last + 1);
            if (*top < 8 || std::abs(top - block.begin() - column) > 3) return false;
            for (int i = first; i <= last; ++i) {
                if (std::abs(i - column) > 14 && block[size_t(i)] * 5 > *top * 4) return false;
            }
            return true;
        });
    }

    std::optional<SoundServer> server_;
    static inline int users_ = 0;
};

TEST_F(SoundTest, AToneStandsInItsColumnWhateverTheOutput) {
    const struct {
        const char* output;
        double frequency;
    } rows[] = {
        {"format=s16le rate=48000 channels=2", 1000},
        {"format=float32le rate=44100 channels=6", 5000},
        {"format=s32le rate=96000 channels=1", 15000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.output);
        Serve(row.output);
        if (IsSkipped() || HasFatalFailure()) return;
        ASSERT_TRUE(Start());
        const Child player = server_->Play(row.frequency);
        EXPECT_TRUE(Hears(row.frequency));
        Stop();
    }
}

TEST_F(SoundTest, PipeWireIsHeardByTheSameInterface) {
    test::PipeWireServer server;
    if (!server.IsInstalled()) GTEST_SKIP() << "skipped: PipeWire, WirePlumber or dbus-daemon is missing";
    ASSERT_TRUE(server.IsReady());
    ASSERT_TRUE(Start());
    const Child player = server.Play(5000);
    EXPECT_TRUE(Hears(5000));
    Stop();
}

TEST_F(SoundTest, TheLastOfItsUsersEndsIt) {
    Serve(kStereo);
    if (IsSkipped() || HasFatalFailure()) return;
    const int before = Threads();
    ASSERT_TRUE(Start() && Start());
    const Child player = server_->Play(5000);
    Stop();
    EXPECT_TRUE(Hears(5000));
    Stop();
    EXPECT_TRUE(WaitUntil([before] { return Threads() == before; }));
    StopAudioCapture();
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Hears(5000));
}

TEST_F(SoundTest, ListeningEndsByItselfWithWhatItListensTo) {
    for (const bool onlyTheOutput : {true, false}) {
        Serve(kStereo);
        if (IsSkipped() || HasFatalFailure()) return;
        std::atomic<int> packets{0};
        DesktopSound sound({.take = [&packets](auto&&...) { ++packets; }});
        std::thread listener([&sound] { sound.Listen(); });
        {
            const Child player = server_->Play(1000);
            EXPECT_TRUE(WaitUntil([&packets] { return packets > 3; }));
            if (onlyTheOutput)
                server_->RemoveOutput();
            else
                server_.reset();
        }
        listener.join();
    }
    // Another one serves a new listener.
    Serve(kStereo);
    ASSERT_TRUE(Start());
    const Child player = server_->Play(1000);
    EXPECT_TRUE(Hears(1000));
}

TEST_F(SoundTest, WhileNobodyLooksItSleepsLongAndMissesNothing) {
    Serve(kStereo);
    if (IsSkipped() || HasFatalFailure()) return;
    constexpr double frequency = 1237;  // no whole number of waves in a packet
    std::atomic<bool> looks{false}, isResting{false}, looksAgain{false};
    std::atomic<int> holes{0}, frames{0};
    const auto sleeps = [] {
        rusage usage{};
        getrusage(RUSAGE_THREAD, &usage);
        return usage.ru_nvcsw;
    };
    int16_t last[2] = {};
    long before = 0;
    int second = 0;
    const auto take = [&](const SoundFormat&, std::span<const std::byte> packet) {
        // Each sample of a sine follows from the two before it. Zeros are what the player missed.
        const double factor = 2.0 * std::cos(2.0 * std::numbers::pi * frequency / 48000.0);
        for (size_t at = 0; at + 4 <= packet.size(); at += 4) {
            int16_t sample = 0;
            std::memcpy(&sample, packet.data() + at, sizeof(sample));
            const bool isSine = last[0] != 0 && last[1] != 0 && sample != 0;
            if (isSine && std::abs(factor * last[1] - last[0] - sample) > 3) ++holes;
            last[0] = std::exchange(last[1], sample);
            frames += isSine;
        }
        // The thread wakes fifty times for a second of short packets.
        if (frames / 48000 == second) return;
        second = frames / 48000;
        const long now = sleeps();
        (looks ? looksAgain : isResting) = looks ? now - before > 30 : now - before < 20;
        before = now;
    };
    DesktopSound sound({.take = take, .takeInterest = [&looks] { return looks.load(); }});
    std::thread listener([&sound] { sound.Listen(); });
    const Child player = server_->Play(frequency, 20);
    EXPECT_TRUE(WaitUntil([&isResting] { return isResting.load(); }));
    looks = true;
    EXPECT_TRUE(WaitUntil([&looksAgain] { return looksAgain.load(); }));
    EXPECT_EQ(holes, 0);
    sound.Stop();
    listener.join();
}

TEST_F(SoundTest, WithoutAServerItEndsAtOnceAndASilentOneHoldsNobodyUp) {
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("pulse")).toLocal8Bit();
    qputenv("PULSE_SERVER", "unix:" + path);
    qputenv("PULSE_COOKIE", folder.filePath(QStringLiteral("cookie")).toLocal8Bit());
    DesktopSound({.take = [](auto&&...) {}}).Listen();

    sockaddr_un name{AF_UNIX, {}};
    std::strncpy(name.sun_path, path.constData(), sizeof(name.sun_path) - 1);
    const int silent = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_TRUE(bind(silent, reinterpret_cast<sockaddr*>(&name), sizeof(name)) == 0 &&
                listen(silent, 4) == 0);
    const int before = Threads();
    ASSERT_TRUE(Start());
    // Stops in the middle of the greeting.
    const int greeting = accept(silent, nullptr, nullptr);
    char byte = 0;
    EXPECT_EQ(read(greeting, &byte, 1), 1);
    const auto begin = std::chrono::steady_clock::now();
    Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(kAudioStopWaitMs));
    EXPECT_TRUE(WaitUntil([before] { return Threads() == before; }));
    close(greeting);
    close(silent);
}

}  // namespace
}  // namespace pixelgrove
