// RunControls: what both sides of a run touch: what the main thread asks of it, and what it reports.
//
// AppState holds the one of today's run, and each run holds its own by shared pointer: that of a run which is
// abandoned stays with it, and AppState gets a copy. Every field is atomic and names who writes it. `M` is
// the main thread, `R` the run's thread; where both write, each change is one read-modify-write.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>

#include "core/Stages.h"

namespace pixelgrove {

// The rates that fpsTarget may have.
constexpr uint32_t kMinFps = 10;
constexpr uint32_t kMaxFps = 240;
constexpr uint32_t ClampedFps(int64_t fps) {
    return uint32_t(std::clamp<int64_t>(fps, kMinFps, kMaxFps));
}

constexpr int32_t kMaxRecordFrameDelayMs = 10000;

// The recordFrameTotal of a recording that goes on until it is ended by hand.
constexpr uint32_t kManualStopSeconds = 0xFFFFFF;
constexpr uint32_t kManualStopFrames = kManualStopSeconds * 60;

// An atomic whose value goes over to a copy of its record.
template <typename T>
struct SharedField : std::atomic<T> {
    using std::atomic<T>::atomic;
    using std::atomic<T>::operator=;
    SharedField() = default;
    SharedField(const SharedField& other) : std::atomic<T>(other.load()) {}
    SharedField& operator=(const SharedField&) = delete;
};

// A lock that is open in a copy of its record.
struct OwnLock : std::mutex {
    OwnLock() = default;
    OwnLock(const OwnLock&) {}
    OwnLock& operator=(const OwnLock&) = delete;
};

// A new place in time that waits for the next frame. Of several the last counts, but a frame count that was
// once to begin anew still does. Any thread asks, the run's takes.
class TimeRequest {
  public:
    struct Place {
        float time = 0.0f;
        bool framesAnew = false;  // the frame count begins anew as well
    };
    void Ask(Place place);
    // What waits, once; nothing when nothing does.
    std::optional<Place> Take();

  private:
    SharedField<uint64_t> word_{0};  // the time's bits, and above them the flags; 0 for none
};

struct RunControls {
    // What is asked.
    SharedField<uint32_t> fpsTarget{30};                    // M; kMinFps to kMaxFps
    SharedField<uint32_t> paused{0};                        // M
    SharedField<uint32_t> showChannelBuffers{0};            // M
    SharedField<uint32_t> useGdiDisplay{0};                 // M
    SharedField<uint32_t> frameBufferFormat{gl::kRgba32f};  // M; read when targets are made
    SharedField<uint32_t> recordWidth{1920};                // M
    SharedField<uint32_t> recordHeight{1080};               // M
    SharedField<uint32_t> recordFrameDelayMs{500};          // M; the rest after a recorded frame
    SharedField<uint32_t> captureRequested{0};              // M sets, R takes
    SharedField<uint32_t> restartRequested{0};              // M sets, R takes
    TimeRequest timeRequest;                                // M asks (and drops at Play), R takes

    // What is reported.
    SharedField<uint32_t> hasContext{0};     // R sets, M clears once the run has ended
    SharedField<float> playTime{0.0f};       // R; the time that is shown
    SharedField<uint32_t> fpsCurrent{0};     // R (and M before the thread starts)
    SharedField<uint32_t> compileFailed{0};  // R, before it reports

    // The recording, which both sides begin, advance and end (render/FrameRecorder.h): each of its changes,
    // and the text that goes with it, is made as a whole under the lock.
    OwnLock recordingLock;
    // The number of the request to record, 0 for none. M by RequestRecording and sets 0; R sets 0 in place of
    // the number that it has seen.
    SharedField<uint32_t> recordingActive{0};
    SharedField<uint32_t> recordFrameTotal{0};  // kManualStopFrames without an end; 0 for a single frame
    SharedField<uint32_t> recordFrameIndex{0};  // the number of the next file
    SharedField<uint32_t> recordFramesLost{0};  // numbers whose files could not be written

    // Recording is wanted, by a request that is told from all before it. Main thread.
    void RequestRecording();
    // The recording, if any, ends without a word.
    void DropRecording();

  private:
    uint32_t recordingRequests_ = 0;  // main thread
};

}  // namespace pixelgrove
