#include "audio/SoundFrames.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace pixelgrove {

namespace {

template <typename Sample>
double SampleAt(const std::byte* bytes, size_t index) {
    Sample sample;  // packets promise no alignment
    std::memcpy(&sample, bytes + index * sizeof(Sample), sizeof(Sample));
    return double(sample);
}

template <typename Sample, typename PutValue>
void TakeFrames(std::span<const std::byte> packet, int channels, PutValue put) {
    const size_t frameBytes = size_t(channels) * sizeof(Sample);
    for (size_t start = 0; start + frameBytes <= packet.size(); start += frameBytes) {
        const std::byte* frame = packet.data() + start;
        const double first = SampleAt<Sample>(frame, 0);
        put(channels == 2 ? (first + SampleAt<Sample>(frame, 1)) * 0.5 : first);
    }
}

}  // namespace

void SoundFrames::Take(const SoundFormat& format, std::span<const std::byte> packet) {
    if (format.channels < 1) return;
    const auto put = [this](double value) { Put(value); };
    if (format.sample == SoundFormat::Sample::Int16)
        TakeFrames<int16_t>(packet, format.channels, put);
    else
        TakeFrames<float>(packet, format.channels, put);
}

void SoundFrames::Put(double value) {
    // The running means would never recover from one that isn't.
    ring_[position_] = std::isfinite(value) ? value : 0.0;
    position_ = (position_ + 1) % ring_.size();
    if (position_ == 0) onBlock_(ring_);
}

}  // namespace pixelgrove
