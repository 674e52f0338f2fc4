// Random bits of the system. Any thread.
#pragma once

#include <cstdint>

namespace pixelgrove {

// 32 bits from getrandom; when that fails each byte comes from rand().
uint32_t SystemRandom32();

}  // namespace pixelgrove
