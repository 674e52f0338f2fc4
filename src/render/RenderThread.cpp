#include "render/RenderThread.h"

#include <GL/glew.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "commands/Commands.h"
#include "controls/LiveValues.h"
#include "core/PlayTime.h"
#include "platform/Clock.h"
#include "project/RunningForm.h"
#include "render/ChannelTextures.h"
#include "render/FramePacing.h"
#include "render/FrameRecorder.h"
#include "render/KeptTargets.h"
#include "render/PastFrames.h"
#include "render/Player.h"
#include "render/Presentation.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"

namespace pixelgrove {

namespace {

// Kept from one play to the next. Only one run that lives touches them; an abandoned one has left its loop's
// reach.
std::atomic<int64_t> lastFrameNs{0};
std::atomic<uint32_t> sampleExponent{0};

std::atomic<int> abandonedRuns{0};

// Asking for too many samples keeps the previous choice.
void ChooseSampleExponent(uint32_t multisampleIndex) {
    GLint most = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    if ((1 << std::min<uint32_t>(multisampleIndex, 30)) <= most) sampleExponent = multisampleIndex;
}

constexpr int64_t kPauseTurnNs = 100'000'000;

void ReportFailure(RenderRun& run, const CompileOutcome& outcome) {
    FailureReport report = ReportOf(*run.context, outcome, run.request.baked);
    run.errors = std::move(report.errors);
    run.failure = std::move(report.failure);
    if (!run.failure.empty()) run.errors[outcome.failedStage] = run.failure;
    run.controls->compileFailed = 1;
    run.WithGate([](Host& host) { host.PostCommand(kCmdCompileResult, 1); });
}

void FrameLoop(RenderRun& run) {
    RunControls& controls = *run.controls;
    RateMeter meter;
    meter.Restart(TickCountMs());
    bool lastWasDrawn = true;
    const auto rest = [&run](int64_t counterNs) { run.RestUntil(counterNs); };
    while (run.stopRequested == 0) {
        // A run that goes on in another's place shows its picture first, which is the one before the last:
        // also in a pause, and at once where there is something to draw on.
        const bool owesPicture = run.request.playedUpTo && run.framesDrawn < 2;
        if (controls.paused && !owesPicture) {
            TakeTimeRequest(run);
            // No frame comes to fill what another window covered meanwhile.
            if (run.context->surface->TakeRepaintRequest()) PresentByBlit(*run.context);
            GivePicture(run);
            rest(CounterNs() + kPauseTurnNs);
            continue;
        }
        const bool isAtOnce = std::exchange(lastWasDrawn, false) && owesPicture;
        const int64_t intervalNs = isAtOnce ? 0 : FrameIntervalNs(controls.fpsTarget);
        const int64_t now = WaitForFrame(lastFrameNs, intervalNs, run.stopRequested, rest);
        if (now != 0) {
            const bool drawn = RenderFrameTick(run);
            if (run.stopRequested) return;
            // The time before the call: the frame's own duration counts into the interval.
            lastFrameNs = now;
            lastWasDrawn = drawn;
            if (drawn) {
                ++meter.windowFrames;
                ++run.framesDrawn;
            }
        }
        controls.fpsCurrent = meter.Update(TickCountMs(), controls.fpsCurrent);
    }
}

void GoOnFrom(const PlayedUpTo& place, RenderContext& context) {
    if (!TakeKeptPictures(context)) {
        const std::optional<PastUse> use = FindPastUse(context);
        if (!use || use->stage != kStageNone) return;
    }
    context.frameCounter = place.frameCounter;
    context.runStartMs = place.runStartMs;
    // As in the first two frames of a count that begins.
    for (ShaderStage& stage : context.project.stages)
        for (ChannelInput& channel : stage.channels)
            channel.samplerCountdown = 2;
}

void RunProject(RenderRun& run) {
    RunControls& controls = *run.controls;
    controls.compileFailed = 0;
    if (!PrepareRenderContext(run)) return;
    controls.playTime = run.context->playTime;
    controls.hasContext = 1;
    ChooseSampleExponent(run.request.multisampleIndex);
    run.context->sampleExponent = sampleExponent;
    run.context->frameBufferFormat = controls.frameBufferFormat;
    const CompileOutcome outcome =
        CompileProject(*run.context, [&run] { return run.stopRequested.load() != 0; });
    if (outcome.result == CompileResult::Stopped) return;
    if (outcome.result == CompileResult::Failed) {
        ReportFailure(run, outcome);
        return;
    }
    if (run.request.playedUpTo) GoOnFrom(*run.request.playedUpTo, *run.context);
    run.WithGate([](Host& host) { host.PostCommand(kCmdCompileResult, 0); });
    FrameLoop(run);
    LeaveRecording(run);
}

}  // namespace

RenderRun::RenderRun(AppState& state, RunRequest what)
    : controls(state.run), palette(state.palette.table), request(std::move(what)), host_(*state.host) {}

RenderRun::~RenderRun() {
    DestroyRenderContext(std::move(context));
}

void RenderRun::AskToStop() {
    stopRequested = 1;
    // A thread that has looked at it already waits by now.
    std::lock_guard lock(gate_);
    stopSignal_.notify_all();
}

void RenderRun::RestUntil(int64_t counterNs) {
    // Both are the system's monotonic clock.
    const std::chrono::steady_clock::time_point end{std::chrono::nanoseconds(counterNs)};
    std::unique_lock lock(gate_);
    stopSignal_.wait_until(lock, end, [this] { return stopRequested != 0; });
}

void RenderRun::Finish() {
    // Outside the gate: letting a context go may wait for the driver, and main must be able to lose patience.
    if (context) DetachRenderContext(*context);
    std::unique_lock lock(gate_);
    if (abandoned_) {
        lock.unlock();
        context.reset();
        --abandonedRuns;
        return;
    }
    ended_ = true;
    endSignal_.notify_all();
}

bool RenderRun::Start(const std::shared_ptr<RenderRun>& run) {
    return run->thread_.Start(kRenderStackBytes, [run] {
        RunProject(*run);
        run->Finish();
    });
}

bool RenderRun::EndOrAbandon(int timeoutMs) {
    std::unique_lock lock(gate_);
    const auto waitFor = [&](int ms) {
        return endSignal_.wait_for(lock, std::chrono::milliseconds(ms), [this] { return ended_; });
    };
    if (waitFor(timeoutMs) || (isSavingFrame && waitFor(kFrameFileWaitMs))) {
        lock.unlock();
        thread_.Join();
        return true;
    }
    abandoned_ = true;
    ++abandonedRuns;
    thread_.Detach();
    return false;
}

std::optional<PlayedUpTo> RenderRun::HandOver() {
    std::lock_guard lock(gate_);
    if (!ended_) return std::nullopt;
    std::optional<PlayedUpTo> place;
    if (framesDrawn == 0 && request.playedUpTo) {
        place = request.playedUpTo;
    } else if (context) {
        place = {context->playTime, context->frameCounter, context->runStartMs, nullptr};
    }
    if (place && context)
        place->context = {context.release(), [](RenderContext* last) {
                              DestroyRenderContext(std::unique_ptr<RenderContext>(last));
                          }};
    return place;
}

std::array<CompileMessages, kStageCount> RenderRun::ReportedErrors() {
    std::lock_guard lock(gate_);
    return errors;
}

CompileMessages RenderRun::ReportedFailure() {
    std::lock_guard lock(gate_);
    return failure;
}

RunRequest SnapshotProject(const AppState& app, ControlSet& controls) {
    PublishControlValues(controls);
    RunRequest request;
    RunningForm form = MakeRunningForm(app.project, controls);
    request.project = std::move(form.project);
    request.baked = std::move(form.baked);
    request.multisampleIndex = app.display.multisampleIndex;
    if (app.project.includeContext) request.includeFolder = app.project.includeContext->searchFolder;
    return request;
}

bool PrepareRenderContext(RenderRun& run) {
    RunRequest& request = run.request;
    std::shared_ptr<RenderContext> past;
    if (request.playedUpTo) past.swap(request.playedUpTo->context);
    run.context = CreateRenderContext(request.surface, std::move(past));
    if (!run.context || !run.context->initialised) return false;
    RenderContext& context = *run.context;
    context.playTime = request.playedUpTo       ? request.playedUpTo->time
                       : request.randomizeStart ? RandomStartTime()
                                                : request.startTime;
    context.includeContext.searchFolder = request.includeFolder;
    context.project.info = request.project.info;
    context.project.version = request.project.version;
    for (uint32_t id = 0; id < kStageCount; ++id) {
        const ShaderStage& asked = request.project.stages[id];
        context.project.stages[id].kind = asked.kind;
        context.project.stages[id].source = asked.source;
        for (uint32_t i = 0; i < kChannelCount; ++i) {
            if (asked.channels[i].kind != kChannelUnused) SetChannel(context, id, i, asked.channels[i]);
        }
    }
    return true;
}

bool StopRenderThread(AppState& app, Player& player, bool keepsSurface) {
    const std::shared_ptr<RenderRun> run = std::exchange(player.currentRun, nullptr);
    if (!run) return true;
    run->AskToStop();
    const bool ended = run->EndOrAbandon(run->stopWaitMs);
    if (!keepsSurface || !ended) run->request.surface->SetInUse(false);
    // What the abandoned thread still writes goes into a record that nobody else looks at.
    if (!ended) app.run = std::make_shared<RunControls>(*app.run);
    app.run->hasContext = 0;
    app.run->DropRecording();
    app.host->CancelPostedCommand(kCmdCompileResult);
    app.host->CancelPostedCommand(kCmdRestart);
    return ended;
}

bool ToggleRenderThread(AppState& app, Player& player, const std::function<RunRequest()>& makeRequest,
                        uint32_t fpsTarget, const std::function<void(RenderRun&)>& configure) {
    if (player.currentRun) {
        StopRenderThread(app, player);
        return false;
    }
    const uint32_t rate = ClampedFps(fpsTarget);
    app.run->fpsTarget = rate;
    app.run->fpsCurrent = rate;
    app.run->timeRequest.Take();
    auto run = std::make_shared<RenderRun>(app, makeRequest());
    // A surface has one context at a time, and a context one surface.
    std::optional<PlayedUpTo>& place = run->request.playedUpTo;
    if (place && place->context && place->context->surface != run->request.surface) place->context.reset();
    if (configure) configure(*run);
    player.currentRun = run;
    if (!RenderRun::Start(run)) {
        player.currentRun = nullptr;
        return false;
    }
    run->request.surface->SetInUse(true);
    return true;
}

int AbandonedRuns() {
    return abandonedRuns;
}

}  // namespace pixelgrove
