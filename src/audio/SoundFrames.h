// SoundFrames: makes a stream of frames into blocks of one channel, each after the other without overlap.
//
// Owned and used by the one thread that takes the sound.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <utility>

#include "audio/SpectrumAnalysis.h"

namespace pixelgrove {

struct SoundFormat {
    enum class Sample { Int16, Float32 };  // both in the machine's byte order

    Sample sample = Sample::Float32;
    int channels = 2;
    double rate = 48000.0;  // Hz
};

class SoundFrames {
  public:
    // onBlock gets each block once it is full, in the device's own scale: -32768 to 32767, or about -1 to 1.
    // It may overwrite it.
    explicit SoundFrames(std::function<void(SampleBlock&)> onBlock) : onBlock_(std::move(onBlock)) {}

    // Takes whole frames; what is left over at the end is dropped. Two channels count by their mean, of any
    // other number the first alone; what isn't finite counts as 0.
    void Take(const SoundFormat& format, std::span<const std::byte> packet);

  private:
    void Put(double value);

    std::function<void(SampleBlock&)> onBlock_;
    SampleBlock ring_{};
    size_t position_ = 0;
};

}  // namespace pixelgrove
