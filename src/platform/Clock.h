// Monotonic time and waiting. Any thread.
#pragma once

#include <cstdint>

namespace pixelgrove {

// CLOCK_MONOTONIC in nanoseconds.
int64_t CounterNs();

// The same clock in whole milliseconds.
uint64_t TickCountMs();

void SleepMs(uint32_t delayMs);

// Sleeps until CounterNs() reaches deadlineNs, resuming after signals. Returns at once for a deadline that is
// past.
void SleepUntilNs(int64_t deadlineNs);

}  // namespace pixelgrove
