// The run: from Play to Stop one thread owns the GL context, compiles the project, and draws frames at a
// target rate.
//
// The main thread starts and stops a run through ToggleRenderThread and steers it through the atomic fields of
// AppState and the RenderContext. The render thread reports through AppState::host (posted commands) and the
// report in its RenderRun.
#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "core/AppState.h"
#include "render/OutputSurface.h"

namespace pixelgrove {

// What a run takes from the editing form and the playback controls, by value, at the press of Play.
struct RunRequest {
    std::array<QString, kStageCount> texts;
    std::array<bool, kStageCount> hasText{};
    std::array<std::array<ChannelInput, kChannelCount>, kStageCount> channels;
    ShaderInfo info;
    float version = 0.1f;
    bool randomizeStart = false;
    float startTime = 0.1f;  // used when randomizeStart is off
    uint32_t multisampleIndex = 0;
    std::shared_ptr<OutputSurface> surface;  // never null
};

// Copies documents, channels and identity of AppState. The surface and start fields are the caller's. Main thread.
RunRequest SnapshotProject();

// One frame of a channel's source stage, for the previews in the main window.
struct ChannelPreview {
    int channel = 0;
    BitmapRef bitmap;
};

// Shared by the main thread and the run's thread; whoever lets go last frees it.
struct RenderRun {
    RunRequest request;

    // The gate: the thread holds `gate` while it touches AppState or posts; a run that was abandoned
    // (stuck in the driver) finds it closed and touches nothing that lives.
    std::mutex gate;
    bool abandoned = false;  // under gate

    std::unique_ptr<RenderContext> context;  // render thread until the thread has ended, then main
    std::array<QString, kStageCount> errors; // complete before command 122 is posted, read after it
    std::thread thread;
    std::atomic<bool> ended{false};

    // Called on the render thread with a preview to show; may be empty.
    std::function<void(ChannelPreview)> showPreview;
    // The shown stage's channels are previewed while AppState::showChannelBuffers is set; main writes.
    std::atomic<uint32_t> previewStage{kStageImage};

    ~RenderRun();
    // Runs f under the gate unless the run was abandoned; false then.
    template <typename F>
    bool WithGate(F&& f) {
        std::lock_guard lock(gate);
        if (abandoned) return false;
        f();
        return true;
    }
};

// Starts a run when AppState::renderThread is null, with the given request; otherwise stops the one there is:
// waits up to kStopWaitMs, then abandons the thread with its context, and frees the context. Returns true
// when a run was started. Main thread.
bool ToggleRenderThread(const std::function<RunRequest()>& makeRequest, uint32_t fpsTarget);

// The stop half alone, also used at exit; nothing without a run. True unless a thread had to be abandoned.
bool StopRenderThread();

// Threads that were abandoned and have not ended yet.
int AbandonedRuns();

constexpr int kStopWaitMs = 4000;

}  // namespace pixelgrove
