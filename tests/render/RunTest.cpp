// Runs as a user makes them: started, stopped, paused, failing, stuck in the driver.
#include <gtest/gtest.h>

#include "commands/Commands.h"
#include "platform/Clock.h"
#include "render/FramePacing.h"
#include "support/Engine.h"
#include "support/HeavyShader.h"
#include "support/Memory.h"
#include "support/RecordingHost.h"

namespace pixelgrove {
namespace {

using test::ResizableSurface;

class Run : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(AllocateGlobals());
        InitialiseSpeed(*Controls());
        App()->host = &host_;
        surface_ = std::make_shared<ResizableSurface>(SurfaceSize{32, 18});
        SetText(kStageImage,
                "void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5, float(iFrame), 0.0, 1.0); }");
    }
    void TearDown() override {
        StopRenderThread();
        // A thread that was abandoned must be gone before the process is.
        for (int i = 0; i < 600 && AbandonedRuns() > 0; ++i)
            SleepMs(100);
        EXPECT_EQ(AbandonedRuns(), 0);
        FreeGlobals();
    }
    static void SetText(uint32_t stage, const char* text) {
        SetDocumentText(App()->documents[stage], QString::fromLatin1(text));
        App()->documents[stage].hasText = true;
    }
    bool Toggle(uint32_t fps = 240) {
        return ToggleRenderThread(
            [this] {
                RunRequest request = SnapshotProject();
                request.surface = surface_;
                request.startTime = 1.0f;
                return request;
            },
            fps);
    }
    // The data of the next compile result, or -1 after ten seconds.
    int WaitResult() {
        for (int i = 0; i < 10000; ++i) {
            if (const auto command = host_.TakePosted(kCmdCompileResult)) return int(*command);
            SleepMs(1);
        }
        return -1;
    }
    static bool WaitFrames(uint64_t count, int timeoutMs = 10000) {
        for (int i = 0; i < timeoutMs; ++i) {
            if (App()->renderThread->framesDrawn >= count) return true;
            SleepMs(1);
        }
        return false;
    }

    RecordingHost host_;
    std::shared_ptr<ResizableSurface> surface_;
};

TEST_F(Run, TwoHundredStartsAndStopsWithErrorsInBetween) {
    double settledMiB = 0;
    for (int i = 0; i < 200; ++i) {
        const bool broken = i % 10 == 7;
        SetText(kStageImage,
                broken ? "void mainImage(" : "void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5); }");
        ASSERT_TRUE(Toggle());
        ASSERT_EQ(WaitResult(), broken ? 1 : 0) << i;
        EXPECT_EQ(App()->compileFailed, broken ? 1u : 0u);
        if (broken) {
            EXPECT_FALSE(App()->renderThread->ReportedErrors()[kStageImage].isEmpty());
            EXPECT_NE(App()->renderContext.load(), nullptr) << "a failed run stays until the next press";
        } else if (i % 3 == 0) {
            ASSERT_TRUE(WaitFrames(2));
        }
        ASSERT_FALSE(Toggle()) << "a second press stops";
        EXPECT_EQ(App()->renderContext.load(), nullptr);
        EXPECT_EQ(App()->renderThread, nullptr);
        if (i == 59) settledMiB = test::ResidentMiB();
    }
    if (!test::kMemoryIsMeasurable) return;
    EXPECT_LT(test::ResidentMiB() - settledMiB, 8.0);
}

TEST_F(Run, StopDuringTheCompileDropsTheReport) {
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(Toggle());
        SleepMs(uint32_t(i % 5));
        ASSERT_TRUE(StopRenderThread());
        EXPECT_FALSE(host_.TakePosted(kCmdCompileResult).has_value());
    }
}

TEST_F(Run, PauseHoldsTimeAndReleaseGoesOn) {
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    ASSERT_TRUE(WaitFrames(5));
    App()->paused = 1;
    SleepMs(150);
    const float time = App()->renderContext.load()->playTime;
    const int frame = App()->renderContext.load()->frameCounter;
    SleepMs(250);
    EXPECT_EQ(App()->renderContext.load()->playTime, time);
    EXPECT_EQ(App()->renderContext.load()->frameCounter, frame);
    App()->paused = 0;
    EXPECT_TRUE(WaitFrames(App()->renderThread->framesDrawn + 3));
}

TEST_F(Run, ReadBackPathShowsThePictureAndRecordingForcesTheSize) {
    App()->useGdiDisplay = 1;
    App()->recordWidth = 50;
    App()->recordHeight = 40;
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    ASSERT_TRUE(WaitFrames(3));
    const BitmapRef small = surface_->Shown();
    ASSERT_TRUE(small);
    EXPECT_EQ(small->width, 32);
    EXPECT_EQ(int(small->Row(0)[2]), 128);
    App()->recordingActive = 1;
    ASSERT_TRUE(WaitFrames(App()->renderThread->framesDrawn + 5));
    EXPECT_EQ(surface_->Shown()->width, 50);
    EXPECT_EQ(surface_->Shown()->height, 40);
    App()->recordingActive = 0;
    ASSERT_TRUE(WaitFrames(App()->renderThread->framesDrawn + 5));
    EXPECT_EQ(surface_->Shown()->width, 32);
}

TEST_F(Run, AShaderThatHangsIsAbandonedAndTheNextRunPlays) {
    SetText(kStageImage, test::kDoublingShader);
    surface_->Resize({160, 90});
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    ASSERT_TRUE(test::WaitForLongFrame([] {}));
    const int64_t start = CounterNs();
    EXPECT_FALSE(StopRenderThread());
    const double seconds = double(CounterNs() - start) / 1e9;
    EXPECT_LT(seconds, 5.0) << "Stop gives up in time";
    EXPECT_EQ(AbandonedRuns(), 1);
    EXPECT_EQ(App()->renderContext.load(), nullptr);

    SetText(kStageImage, "void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5); }");
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    EXPECT_TRUE(WaitFrames(2, 60000));
}

TEST(Pacing, IntervalsAndRate) {
    EXPECT_EQ(FrameIntervalNs(240), 4'166'666);
    RateMeter meter;
    meter.Restart(1000);
    EXPECT_EQ(meter.Update(1000, 33), 33u) << "no time has passed";
    uint64_t now = 1000;
    for (int frame = 1; frame <= 60 * 20; ++frame) {
        now = 1000 + uint64_t(frame) * 1000 / 60;
        ++meter.windowFrames;
        const uint32_t rate = meter.Update(now, 0);
        if (frame <= 60) continue;
        EXPECT_NEAR(rate, 60, 1) << "no jump when the window is cut";
    }
    EXPECT_LE(now - meter.windowStartMs, 6000u);
}

TEST(Pacing, WaitEndsAtTheDeadlineOrOnStop) {
    std::atomic<uint32_t> stop{0};
    const int64_t last = CounterNs();
    int64_t now = 0;
    while (now == 0)
        now = WaitForFrame(last, 30'000'000, stop);
    EXPECT_GT(now - last, 30'000'000);
    EXPECT_EQ(WaitForFrame(now - 50'000'000, 1'000'000, stop) > now, true)
        << "a frame that is late is due at once";
    stop = 1;
    EXPECT_EQ(WaitForFrame(CounterNs(), 5'000'000, stop), 0);
}

}  // namespace
}  // namespace pixelgrove
