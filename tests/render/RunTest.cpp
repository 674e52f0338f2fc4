// Runs as a user makes them: started, stopped, paused, failing, stuck in the driver.
#include <gtest/gtest.h>

#include <utility>

#include "commands/Commands.h"
#include "platform/Clock.h"
#include "render/FramePacing.h"
#include "render/RunFixture.h"
#include "support/HangingSurface.h"
#include "support/Memory.h"

namespace pixelgrove {
namespace {

using test::ResizableSurface;
using test::Run;

TEST_F(Run, TwoHundredStartsAndStopsWithErrorsInBetween) {
    double settledMiB = 0;
    for (int i = 0; i < 200; ++i) {
        const bool broken = i % 10 == 7;
        SetText(kStageImage,
                broken ? "void mainImage(" : "void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5); }");
        ASSERT_TRUE(Toggle());
        ASSERT_EQ(WaitResult(), broken ? 1 : 0) << i;
        EXPECT_EQ(App()->run->compileFailed, broken ? 1u : 0u);
        if (broken) {
            EXPECT_FALSE(player_.currentRun->ReportedErrors()[kStageImage].empty());
            EXPECT_EQ(App()->run->hasContext, 1u) << "a failed run stays until the next press";
        } else if (i % 3 == 0) {
            ASSERT_TRUE(WaitFrames(2));
        }
        ASSERT_FALSE(Toggle()) << "a second press stops";
        EXPECT_EQ(App()->run->hasContext, 0u);
        EXPECT_EQ(player_.currentRun, nullptr);
        if (i == 59) settledMiB = test::ResidentMiB();
    }
    if (!test::kMemoryIsMeasurable) return;
    EXPECT_LT(test::ResidentMiB() - settledMiB, 8.0);
}

TEST_F(Run, StopDropsWhatTheRunPosted) {
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(Toggle());
        SleepMs(uint32_t(i % 5));  // into the compile, or past it
        host_.PostCommand(kCmdRestart, 0);
        ASSERT_TRUE(StopRenderThread(*App(), player_));
        for (const int id : {kCmdCompileResult, kCmdRestart})
            EXPECT_FALSE(host_.TakePosted(id).has_value()) << id;
    }
}

TEST_F(Run, PauseHoldsTimeAndReleaseGoesOn) {
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    ASSERT_TRUE(WaitFrames(5));
    App()->run->paused = 1;
    const auto waitTurns = [this](int count) {
        return WaitUntil(
            [this, end = surface_->RepaintsAsked() + count] { return surface_->RepaintsAsked() >= end; });
    };
    ASSERT_TRUE(waitTurns(1)) << "the frame that was under way";
    const RenderContext& context = *player_.currentRun->context;
    const float time = context.playTime;
    const int frame = context.frameCounter;
    ASSERT_TRUE(waitTurns(2));
    EXPECT_EQ(context.playTime, time);
    EXPECT_EQ(App()->run->playTime, time);
    EXPECT_EQ(context.frameCounter, frame);
    App()->run->timeRequest.Ask({.time = 5.0f, .framesAnew = true});
    App()->run->timeRequest.Ask({7.5f});
    EXPECT_TRUE(WaitUntil([] { return App()->run->playTime == 7.5f; })) << "the last counts, also now";
    EXPECT_EQ(context.frameCounter, 0) << "and of all of them what begins anew";
    App()->run->paused = 0;
    EXPECT_TRUE(WaitFrames(player_.currentRun->framesDrawn + 3));
}

TEST_F(Run, ReadBackPathShowsThePictureAndRecordingForcesTheSize) {
    App()->run->useGdiDisplay = 1;
    App()->run->recordWidth = 50;
    App()->run->recordHeight = 40;
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    ASSERT_TRUE(WaitFrames(3));
    const BitmapRef small = surface_->Shown();
    ASSERT_TRUE(small);
    EXPECT_EQ(small->width, 32);
    EXPECT_EQ(int(small->Row(0)[2]), 128);
    App()->run->recordingActive = 1;
    ASSERT_TRUE(WaitFrames(player_.currentRun->framesDrawn + 5));
    EXPECT_EQ(surface_->Shown()->width, 50);
    EXPECT_EQ(surface_->Shown()->height, 40);
    App()->run->recordingActive = 0;
    ASSERT_TRUE(WaitFrames(player_.currentRun->framesDrawn + 5));
    EXPECT_EQ(surface_->Shown()->width, 32);
}

TEST_F(Run, NoRequestIsLostWhileFramesRun) {
    RunControls& run = *App()->run;
    run.recordHeight = 40;
    run.useGdiDisplay = 1;
    ASSERT_TRUE(Toggle());
    ASSERT_EQ(WaitResult(), 0);
    const auto ticks = [this] { return player_.currentRun->framesDrawn + uint64_t(host_.beeps); };
    const auto waitTwoFrames = [this] { return WaitFrames(player_.currentRun->framesDrawn + 2); };
    int captures = 0;
    int restarts = 0;
    uint32_t number = 0;
    for (int round = 1; round <= 40; ++round) {
        const bool records = round % 2 == 1;
        run.recordWidth = records ? 50 : 0;  // a capture without area beeps instead
        run.paused = round % 20 == 0;
        const uint64_t lastTick = ticks() + 4;
        for (int i = 0; run.paused ? i < 500 : ticks() < lastTick; ++i) {
            run.fpsTarget = kMaxFps - ++number % 100;
            run.timeRequest.Ask({.time = -1000.0f, .framesAnew = i % 3 == 0});
            if (run.restartRequested.exchange(1) == 0) ++restarts;
            if (!records && run.captureRequested.exchange(1) == 0) ++captures;
            if (records && i % 2 == 0) run.RequestRecording();
            if (records && i % 2 == 1) run.recordingActive = 0;
        }
        const float time = 1000.0f * float(round);
        run.timeRequest.Ask({time});
        run.fpsTarget = kMaxFps;
        if (records) run.RequestRecording();
        ASSERT_TRUE(WaitUntil([&] { return run.playTime >= time && run.playTime < time + 500; })) << round;
        run.paused = 0;
        if (records) {
            EXPECT_TRUE(WaitUntil([&] { return surface_->Shown() && surface_->Shown()->width == 50; }));
            run.recordingActive = 0;
        }
        ASSERT_TRUE(waitTwoFrames());
        ASSERT_TRUE(WaitUntil([&] { return run.captureRequested == 0 && run.restartRequested == 0; }));
        ASSERT_TRUE(waitTwoFrames());
        EXPECT_EQ(host_.beeps, captures) << round;
    }
    int posted = 0;
    while (host_.TakePosted(kCmdRestart))
        ++posted;
    EXPECT_EQ(posted, restarts);
    EXPECT_GT(captures, 40);
    EXPECT_GT(restarts, 100);
}

TEST_F(Run, ARequestToRecordOutlivesTheEndOfARunThatHasNotSeenIt) {
    App()->run->RequestRecording();
    for (const bool again : {true, false}) {
        SCOPED_TRACE(again);
        const auto hanging = std::make_shared<test::HangingSurface>(test::HangingSurface::In::Frame);
        surface_ = hanging;
        ASSERT_TRUE(Toggle());
        ASSERT_TRUE(WaitUntil([&] { return hanging->IsHanging(); }));
        const std::shared_ptr<RenderRun> run = std::exchange(player_.currentRun, nullptr);
        run->stopRequested = 1;
        if (again) App()->run->RequestRecording();
        hanging->Release();
        ASSERT_TRUE(run->EndOrAbandon(kStopWaitMs));
        EXPECT_EQ(App()->run->recordingActive != 0, again);
    }
}

TEST_F(Run, WhatHangsIsAbandonedAndTheNextRunPlays) {
    App()->run->useGdiDisplay = 1;
    for (const auto place : {test::HangingSurface::In::Context, test::HangingSurface::In::Frame}) {
        const auto hanging = std::make_shared<test::HangingSurface>(place);
        surface_ = hanging;
        ASSERT_TRUE(Toggle());
        const std::shared_ptr<RenderRun> hung = player_.currentRun;
        hung->stopWaitMs = 5;
        ASSERT_TRUE(WaitUntil([&] { return hanging->IsHanging(); }));
        EXPECT_FALSE(StopRenderThread(*App(), player_));
        EXPECT_EQ(AbandonedRuns(), 1);
        EXPECT_EQ(App()->run->hasContext, 0u);

        surface_ = std::make_shared<ResizableSurface>(SurfaceSize{32, 18});
        ASSERT_TRUE(Toggle());
        ASSERT_EQ(WaitResult(), 0);
        EXPECT_TRUE(WaitFrames(2));
        EXPECT_NE(App()->run, hung->controls) << "what comes back late touches nothing that lives";
        hanging->Release();
        EXPECT_TRUE(WaitUntil([] { return AbandonedRuns() == 0; }));
        EXPECT_FALSE(host_.TakePosted(kCmdCompileResult).has_value());
        EXPECT_TRUE(StopRenderThread(*App(), player_));
    }
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
