#include "render/FramePacing.h"

#include <algorithm>
#include <cmath>

namespace pixelgrove {

namespace {

constexpr int64_t kCounterFrequency = 1'000'000'000;
constexpr int64_t kSpinNs = 300'000;
constexpr int64_t kLongestSleepNs = 20'000'000;

}  // namespace

int64_t FrameIntervalNs(uint32_t fpsTarget) {
    return kCounterFrequency / std::max<uint32_t>(fpsTarget, 1);
}

int64_t WaitForFrame(int64_t lastNs, int64_t intervalNs, const std::atomic<uint32_t>& stop,
                     const std::function<void(int64_t)>& sleepUntilNs) {
    const int64_t deadlineNs = lastNs + intervalNs;
    int64_t now = CounterNs();
    if (now > deadlineNs) return now;
    if (deadlineNs - now > kLongestSleepNs) {
        sleepUntilNs(now + kLongestSleepNs);
        return 0;
    }
    if (deadlineNs - now > kSpinNs) sleepUntilNs(deadlineNs - kSpinNs);
    while (stop.load(std::memory_order_relaxed) == 0) {
        now = CounterNs();
        if (now > deadlineNs) return now;
    }
    return 0;
}

void RateMeter::Restart(uint64_t nowMs) {
    windowStartMs = nowMs;
    windowFrames = 0;
}

uint32_t RateMeter::Update(uint64_t nowMs, uint32_t fallback) {
    const uint64_t elapsedMs = nowMs - windowStartMs;
    if (elapsedMs == 0) return fallback;
    const auto rate = uint32_t(std::floor(float(windowFrames) / (float(elapsedMs) / 1000.0f) + 0.5f));
    if (elapsedMs > 6000) {
        windowStartMs = nowMs - 2000;
        windowFrames = uint64_t(rate) * 2;
    }
    return rate;
}

}  // namespace pixelgrove
