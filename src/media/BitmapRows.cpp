#include "media/BitmapRows.h"

#include <cstring>
#include <new>

namespace pixelgrove {

std::optional<std::vector<uint8_t>> RepackBitmapRows(const Bitmap& bitmap, bool vflip) {
    const int depth = bitmap.bitsPerPixel;
    if ((depth != 8 && depth != 24 && depth != 32) || !bitmap.IsComplete()) return std::nullopt;

    const size_t rowBytes = size_t(bitmap.width) * size_t(depth / 8);
    try {
        std::vector<uint8_t> tight(rowBytes * size_t(bitmap.height));
        for (int row = 0; row < bitmap.height; ++row) {
            const int source = vflip ? bitmap.height - 1 - row : row;
            std::memcpy(tight.data() + size_t(row) * rowBytes, bitmap.Row(source), rowBytes);
        }
        return tight;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace pixelgrove
