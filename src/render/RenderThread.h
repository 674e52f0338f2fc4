// The run: from Play to Stop one thread owns the GL context, compiles the project, and draws frames at a
// target rate.
//
// The main thread starts and stops a run through ToggleRenderThread and steers it through its RunControls.
// The render thread reports there, through the host (posted commands), and in its RenderRun.
#pragma once

#include <array>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "controls/BakedText.h"
#include "core/AppState.h"
#include "core/CompileMessage.h"
#include "media/FramePool.h"
#include "platform/SynchronizedValue.h"
#include "platform/Thread.h"
#include "recording/RecorderSettings.h"
#include "render/OutputSurface.h"
#include "render/SamplerMailbox.h"

namespace pixelgrove {

struct Player;

// Where a run was that another takes the place of, and its context, with the pictures that it has drawn.
struct PlayedUpTo {
    float time = 0.0f;
    int32_t frameCounter = -1;
    uint64_t runStartMs = 0;
    std::shared_ptr<RenderContext> context;  // detached; null where there is none to go on with
};

// What a run takes from the editing form and the playback controls, by value, at the press of Play.
struct RunRequest {
    ShaderProject project;  // in the running form
    BakedStages baked;      // which of its lines hold a control's value
    bool randomizeStart = false;
    float startTime = 0.1f;  // used when randomizeStart is off
    // In place of both: goes on where another run was, with the pictures of the stages that both have
    // (render/KeptTargets.h). The frame count begins anew all the same where a stage reads a past frame whose
    // picture can't be kept. The thread takes the context out; one on another surface goes unused.
    std::optional<PlayedUpTo> playedUpTo;
    uint32_t multisampleIndex = 0;
    QString includeFolder;                   // where #include files are sought; may be empty
    std::shared_ptr<OutputSurface> surface;  // never null
};

// What is edited now, in the running form, with what else AppState holds for a run. The controls' values are
// published for its frames, and baked as MakeRunningForm does it. The surface and start fields are the
// caller's. Main thread.
RunRequest SnapshotProject(const AppState& app, ControlSet& controls);

// One frame of a channel's source stage, for the previews in the main window.
struct ChannelPreview {
    int channel = 0;
    BitmapRef bitmap;
    uint32_t stage = kStageNone;  // the stage whose channel it is
};

constexpr int kStopWaitMs = 4000;
// And then for a frame's file, which can take long to become whole.
constexpr int kFrameFileWaitMs = 30'000;

// Shared by the main thread and the run's thread; whoever lets go last frees it.
struct RenderRun {
    // Shares what `state` holds for runs: the controls, the palette, and the host.
    RenderRun(AppState& state, RunRequest what);
    ~RenderRun();
    RenderRun(const RenderRun&) = delete;
    RenderRun& operator=(const RenderRun&) = delete;

    const std::shared_ptr<RunControls> controls;
    const std::shared_ptr<const SharedPalette> palette;
    RunRequest request;
    std::atomic<uint32_t> stopRequested{0};  // main sets, the thread leaves at the end of its turn
    int stopWaitMs = kStopWaitMs;            // how long main waits for that; main's
    std::unique_ptr<RenderContext> context;  // the thread's until it has ended, then main's
    // Per stage: compile errors in terms of the user's files and lines. The thread's until command 122 is
    // posted; main reads them through ReportedErrors.
    std::array<CompileMessages, kStageCount> errors;
    CompileMessages failure;  // what has no log: one plain sentence, which is the stage's error too; or empty

    // Called on the render thread with a preview to show; may be empty. Set before the thread starts.
    std::function<void(ChannelPreview)> showPreview;
    // The stage whose Buffer channels are previewed while RunControls::showChannelBuffers is set; main
    // writes.
    std::atomic<uint32_t> previewStage{kStageImage};

    SamplerMailbox samplers;  // filter, wrap and flip as changed since Play

    std::atomic<uint64_t> framesDrawn{0};  // render thread writes

    // A picture of what is shown, at the size that it has: main asks, the thread leaves it here and posts
    // command kCmdPictureTaken.
    std::atomic<uint32_t> pictureRequested{0};
    SynchronizedValue<BitmapRef> picture;

    // Where recorded frames go; null for nowhere. Set before the thread starts.
    std::shared_ptr<const SharedFramePath> framePath;
    std::atomic<bool> isSavingFrame{false};  // the thread writes

    // The thread's.
    uint32_t recording = 0;    // the request to record that the frame follows
    QString recordingTrouble;  // what went wrong first in that recording; or empty
    FramePool frames;
    std::shared_ptr<Bitmap> frame;  // what this frame was read back into; null when it wasn't

    // The gate: held while the thread calls what the main thread owns, f(Host&). A run that was abandoned,
    // stuck in the driver, finds it closed and touches nothing that lives. False then, and f didn't run.
    template <typename F>
    bool WithGate(F&& f) {
        std::lock_guard lock(gate_);
        if (abandoned_) return false;
        f(host_);
        return true;
    }

    // Asks the thread to leave at the end of its turn. Main thread.
    void AskToStop();
    // Sleeps until the counter (platform/Clock.h) is there, or main asks to stop. Render thread.
    void RestUntil(int64_t counterNs);
    // The last thing the thread does: leaves the context to main, or frees it when the run was abandoned.
    void Finish();
    // Starts the thread; false when the system gives none. Main thread.
    static bool Start(const std::shared_ptr<RenderRun>& run);
    // Waits for Finish, and longer for a frame's file, and joins the thread. When it takes longer, closes the
    // gate for good, lets the thread go on without anything it could touch, and returns false. Main thread.
    bool EndOrAbandon(int timeoutMs);
    // Where the run ended, that of the run before where it drew nothing, with the context, which this run has
    // no more. Nothing while its thread goes on, and without a context. Main thread.
    std::optional<PlayedUpTo> HandOver();
    // The errors and the failure sentence, after command 122. Main thread.
    std::array<CompileMessages, kStageCount> ReportedErrors();
    CompileMessages ReportedFailure();

  private:
    Thread thread_;
    Host& host_;  // behind the gate
    std::mutex gate_;
    std::condition_variable endSignal_;
    std::condition_variable stopSignal_;
    bool abandoned_ = false;  // under gate_
    bool ended_ = false;      // under gate_
};

// The press of Play, Stop and restart: with a current run, StopRenderThread; without one, starts one with
// makeRequest()'s result after storing the clamped rate (10..240) to fpsTarget and fpsCurrent. configure may
// finish the run's record before its thread starts. True when a run was started; without a run before, false
// says that the system gave no thread. Main thread.
bool ToggleRenderThread(AppState& app, Player& player, const std::function<RunRequest()>& makeRequest,
                        uint32_t fpsTarget, const std::function<void(RenderRun&)>& configure = {});

// Asks the current run to stop, waits as long as the run says, and frees its context; a thread that doesn't
// end in time is abandoned together with context and controls: AppState goes on with a copy of these. Posted
// results of the run are dropped. Nothing without a run. True unless a thread was abandoned. With
// keepsSurface the surface of a run that has ended counts as in use, for another that takes its place. Main
// thread.
bool StopRenderThread(AppState& app, Player& player, bool keepsSurface = false);

// Threads that were abandoned and have not ended yet.
int AbandonedRuns();

// Compilers of drivers go down a shader's expressions by recursion: the thread that compiles needs a deep
// stack.
constexpr size_t kRenderStackBytes = size_t(64) << 20;

// Builds the run's context, which takes the request's project and what it goes on with. Render thread, or the
// one thread of a program without windows. False when no context can be made.
bool PrepareRenderContext(RenderRun& run);

// One frame by the window's size, or by the recording size. True when a frame was drawn. Render thread.
bool RenderFrameTick(RenderRun& run);

}  // namespace pixelgrove
