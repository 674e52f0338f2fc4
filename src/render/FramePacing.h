// When the next frame is due, and how many come per second. Pure but for the clock in WaitForFrame.
//
// Owned by the render thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

#include "platform/Clock.h"

namespace pixelgrove {

// Nanoseconds from frame to frame, by integer division of the counter's frequency.
int64_t FrameIntervalNs(uint32_t fpsTarget);

// Waits until more than intervalNs have passed since lastNs, and returns the counter then; returns 0 when
// stop was set first, or when a wait of at most 20 ms has not reached the deadline: the caller looks at
// pause, rate and size anew and asks again. Sleeps to about 0.3 ms before the deadline and spins the rest:
// sleeping alone is late by the scheduler's whim, spinning alone takes a whole core. sleepUntilNs may return
// as soon as stop is set.
int64_t WaitForFrame(int64_t lastNs, int64_t intervalNs, const std::atomic<uint32_t>& stop,
                     const std::function<void(int64_t)>& sleepUntilNs = SleepUntilNs);

// The shown rate looks back over 2 to 6 seconds: a window that grows past 6 is cut to 2 that carry the same
// rate.
struct RateMeter {
    uint64_t windowStartMs = 0;
    uint64_t windowFrames = 0;

    void Restart(uint64_t nowMs);
    // Frames per second, rounded; fallback when no time has passed yet.
    uint32_t Update(uint64_t nowMs, uint32_t fallback);
};

}  // namespace pixelgrove
