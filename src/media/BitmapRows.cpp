#include "media/BitmapRows.h"

#include <QtEndian>
#include <cstring>
#include <new>

namespace pixelgrove {

namespace {

// Two pixels at a time, as one word; each write but the last reaches into the next one's place.
int RgbOfPairs(const uint8_t* in, int width, uint8_t* out) {
    int x = 0;
    for (; x + 3 <= width; x += 2, in += 8, out += 6) {
        const uint64_t word = qFromBigEndian<quint64>(in);
        qToLittleEndian<quint64>((word >> 40 & 0xffffff) | (word >> 8 & 0xffffff) << 24, out);
    }
    return x;
}

}  // namespace

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

void UprightRgbRow(const Bitmap& bitmap, int y, uint8_t* out) {
    const uint8_t* in = bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - y : y);
    const int step = bitmap.bitsPerPixel / 8;
    int x = step == 4 ? RgbOfPairs(in, bitmap.width, out) : 0;
    for (in += x * step, out += x * 3; x < bitmap.width; ++x, in += step, out += 3) {
        out[0] = in[2];
        out[1] = in[1];
        out[2] = in[0];
    }
}

}  // namespace pixelgrove
