#include "core/PaletteBlock.h"

#include <algorithm>

namespace pixelgrove {

void UnpackPalette(const PaletteBlock& block, PaletteTable& table) {
    const PaletteBlock copy = block;
    const int count = std::clamp(copy.count, 0, kMaxPaletteColours);
    const std::lock_guard hold(table.lock);
    for (int i = 0; i < count; ++i) {
        table.colours[size_t(i)] =
            uint32_t(copy.red[i]) << 16 | uint32_t(copy.green[i]) << 8 | uint32_t(copy.blue[i]);
    }
    table.count = uint32_t(count);
    ++table.serial;
}

}  // namespace pixelgrove
