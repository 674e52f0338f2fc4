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

// Stages that keep what they began with, which Image shows: Buffer A and a mark in red and green, Cube A in
// blue, Buffer B in alpha, which a stage that isn't there fills.
TEST_F(Run, AnotherGoesOnWithThePicturesThatBothHave) {
    const auto connect = [](uint32_t stage, size_t index, uint32_t source) {
        ChannelInput& channel = App()->project.channels[stage][index];
        test::SetKind(channel, source == kStageCubeA ? kChannelCubeA : kChannelBuffer);
        channel.sourceStage = int32_t(source);
    };
    connect(kStageCubeA, 0, kStageCubeA);
    for (const uint32_t stage : {kStageBufferA, kStageBufferB, kStageCubeA})
        connect(kStageImage, stage == kStageCubeA ? 2 : stage - kStageBufferA, stage);
    App()->run->useGdiDisplay = 1;
    int32_t count = -1;
    const auto play = [&](const char* start, const char* mark, int expectedResult = 0,
                          SurfaceSize size = {32, 18}) {
        const auto set = [&](uint32_t stage, QByteArray text) {
            SetText(stage, text.replace("START", start).replace("MARK", mark));
        };
        if (const std::shared_ptr<RenderRun> last = player_.currentRun) {
            EXPECT_TRUE(StopRenderThread(*App(), player_));
            playedUpTo_ = last->HandOver();
            count = playedUpTo_->frameCounter;
        }
        surface_->Resize(size);
        set(kStageBufferA,
            "void mainImage(out vec4 c, in vec2 p) {"
            " c = vec4(iFrame == 0 ? START : texelFetch(iChannel0, ivec2(p), 0).r, MARK, 0, 1); }");
        if (App()->project.documents[kStageBufferB].hasText)
            set(kStageBufferB,
                "void mainImage(out vec4 c, in vec2 p) {"
                " c = iFrame == 0 ? vec4(START) : texelFetch(iChannel0, ivec2(p), 0); }");
        set(kStageCubeA,
            "void mainCubemap(out vec4 c, in vec2 p, in vec3 o, in vec3 d) {"
            " c = iFrame == 0 ? vec4(START) : texture(iChannel0, d); }");
        set(kStageImage,
            "void mainImage(out vec4 c, in vec2 p) { c = vec4(texelFetch(iChannel0, ivec2(p), 0).rg,"
            " texture(iChannel2, vec3(1, .2, .1)).b, texelFetch(iChannel1, ivec2(p), 0).a); }");
        EXPECT_TRUE(Toggle());
        EXPECT_EQ(WaitResult(), expectedResult);
        std::string shown;
        if (expectedResult != 0 || !WaitFrames(4)) return shown;
        for (const int byte : {2, 1, 0, 3})
            shown += std::to_string(surface_->Shown()->Row(0)[byte]) + ' ';
        return shown;
    };
    EXPECT_EQ(play("0.2", "0"), "51 0 51 255 ");
    EXPECT_EQ(play("0.4", "1"), "51 255 51 255 ");
    EXPECT_EQ(play("gone", "1", 1), "");
    const int32_t countBefore = count;
    EXPECT_EQ(play("gone", "0", 1), "") << "twice";
    EXPECT_EQ(play("0.4", "0"), "51 0 51 255 ") << "what doesn't compile loses nothing";
    EXPECT_EQ(count, countBefore);
    App()->project.documents[kStageBufferB].hasText = true;
    EXPECT_EQ(play("0.4", "1"), "51 255 51 0 ") << "a new stage is clear, and the others go on";
    EXPECT_GT(count, countBefore);
    EXPECT_EQ(play("0.6", "0", 0, {40, 20}), "153 0 153 153 ") << "of another size";
    App()->run->frameBufferFormat = 0x881A;  // 16 bits a channel
    EXPECT_EQ(play("0.4", "0", 0, {40, 20}), "102 0 102 102 ") << "of another format";
    ASSERT_TRUE(StopRenderThread(*App(), player_));
    EXPECT_EQ(play("0.8", "0"), "204 0 204 204 ") << "by Stop and Play";
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
