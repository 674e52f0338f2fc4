// How the spectrum is made of the sound, as the user set it.
//
// Main writes, the audio thread reads and holds it by shared pointer, as it may outlive a stuck shut-down.
#pragma once

#include <atomic>
#include <cstdint>

namespace pixelgrove {

struct AudioParameters {
    static constexpr int32_t kMaxSmoothingWeight = 128;
    static constexpr int32_t kMaxNoiseLevel = 100;

    std::atomic<int32_t> smoothingWeight{8};  // 0..128; stored as AudioSensitivity
    std::atomic<int32_t> noiseLevel{1};       // 0..100; stored as AudioSmoothing
    std::atomic<double> homingFactor{0.999};  // 0..1
    std::atomic<bool> maximizeRange{false};
};

}  // namespace pixelgrove
