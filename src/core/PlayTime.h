// Start times for a shader's clock. Any thread.
#pragma once

#include <cstdint>

namespace pixelgrove {

// float(bits) * 2.3283064e-10 * 4094.9 + 0.1, in single precision and in that order: 0.1 to about 4095.
float StartTimeFromBits(uint32_t bits);

// StartTimeFromBits of 32 random bits.
float RandomStartTime();

}  // namespace pixelgrove
