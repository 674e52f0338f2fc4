// The time that this thread has kept a processor busy, for tests of what must not take long.
#pragma once

#include <ctime>

namespace pixelgrove::test {

// What else the machine does doesn't count.
inline int ThreadCpuMs() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return int(now.tv_sec * 1000 + now.tv_nsec / 1'000'000);
}

}  // namespace pixelgrove::test
