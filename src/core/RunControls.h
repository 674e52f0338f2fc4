// RunControls: what both sides of a run touch: what the main thread asks of it, and what it reports.
//
// AppState holds the one of today's run, and each run holds its own by shared pointer. Every field is atomic
// and names who writes it. `M` is the main thread, `R` the run's thread.
#pragma once

#include <atomic>
#include <cstdint>

#include "core/Stages.h"

namespace pixelgrove {

// The rates that fpsTarget may have.
constexpr uint32_t kMinFps = 10;
constexpr uint32_t kMaxFps = 240;

struct RunControls {
    // What is asked.
    std::atomic<uint32_t> fpsTarget{30};                    // M; kMinFps to kMaxFps
    std::atomic<uint32_t> paused{0};                        // M
    std::atomic<uint32_t> showChannelBuffers{0};            // M
    std::atomic<uint32_t> useGdiDisplay{0};                 // M
    std::atomic<uint32_t> frameBufferFormat{gl::kRgba32f};  // M; read when targets are made
    std::atomic<uint32_t> recordWidth{1920};                // M
    std::atomic<uint32_t> recordHeight{1080};               // M
    std::atomic<uint32_t> recordFrameTotal{0};              // M
    std::atomic<uint32_t> recordingActive{0};               // M; cleared by R at its end
    std::atomic<uint32_t> captureRequested{0};              // M sets, R takes
    std::atomic<uint32_t> restartRequested{0};              // M sets, R takes

    // What is reported.
    std::atomic<uint32_t> fpsCurrent{0};        // R (and M at Play)
    std::atomic<uint32_t> recordFrameIndex{0};  // R (and M at Play)
    std::atomic<uint32_t> compileFailed{0};     // R, before it reports
};

}  // namespace pixelgrove
