#include "core/RunControls.h"

#include <bit>

namespace pixelgrove {

namespace {

constexpr uint64_t kHasTime = uint64_t(1) << 32;
constexpr uint64_t kFramesAnew = uint64_t(1) << 33;

}  // namespace

void TimeRequest::Ask(Place place) {
    const uint64_t asked =
        std::bit_cast<uint32_t>(place.time) | kHasTime | (place.framesAnew ? kFramesAnew : 0);
    uint64_t waiting = word_;
    while (!word_.compare_exchange_weak(waiting, asked | (waiting & kFramesAnew))) {
    }
}

std::optional<TimeRequest::Place> TimeRequest::Take() {
    const uint64_t taken = word_.exchange(0);
    if (taken == 0) return std::nullopt;
    return Place{std::bit_cast<float>(uint32_t(taken)), (taken & kFramesAnew) != 0};
}

void RunControls::RequestRecording() {
    if (++recordingRequests_ == 0) ++recordingRequests_;
    recordFramesLost = 0;
    recordingActive = recordingRequests_;
}

void RunControls::DropRecording() {
    const std::scoped_lock hold(recordingLock);
    recordingActive = 0;
    recordFrameTotal = 0;
}

}  // namespace pixelgrove
