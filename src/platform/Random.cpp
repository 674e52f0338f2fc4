#include "platform/Random.h"

#include <sys/random.h>

#include <cerrno>
#include <cstdlib>

namespace pixelgrove {

uint32_t SystemRandom32() {
    uint32_t bits = 0;
    ssize_t got = 0;
    do {
        got = getrandom(&bits, sizeof bits, 0);
    } while (got < 0 && errno == EINTR);
    if (got == ssize_t(sizeof bits)) return bits;
    // A kernel or sandbox without getrandom: weaker bits are good enough for start times and previews.
    bits = 0;
    for (int i = 0; i < 4; ++i)
        bits = bits << 8 | uint32_t(rand() & 0xFF);
    return bits;
}

}  // namespace pixelgrove
