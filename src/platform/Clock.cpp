#include "platform/Clock.h"

#include <ctime>

#include <cerrno>

namespace pixelgrove {

namespace {
constexpr int64_t kNsPerSecond = 1'000'000'000;
constexpr int64_t kNsPerMs = 1'000'000;
}  // namespace

int64_t CounterNs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t(now.tv_sec) * kNsPerSecond + now.tv_nsec;
}

uint64_t TickCountMs() {
    return uint64_t(CounterNs() / kNsPerMs);
}

void SleepMs(uint32_t delayMs) {
    SleepUntilNs(CounterNs() + int64_t(delayMs) * kNsPerMs);
}

void SleepUntilNs(int64_t deadlineNs) {
    if (deadlineNs <= 0) return;
    const timespec deadline{time_t(deadlineNs / kNsPerSecond), long(deadlineNs % kNsPerSecond)};
    // The deadline is absolute, so an interrupted sleep resumes without drift.
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR) {
    }
}

}  // namespace pixelgrove
