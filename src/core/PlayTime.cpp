#include "core/PlayTime.h"

#include "platform/Random.h"

namespace pixelgrove {

float StartTimeFromBits(uint32_t bits) {
    // Each step is stored, so that no wider intermediate changes the last digit.
    float time = float(bits);
    time *= 2.3283064e-10f;
    time *= 4094.9f;
    time += 0.1f;
    return time;
}

float RandomStartTime() {
    return StartTimeFromBits(SystemRandom32());
}

}  // namespace pixelgrove
