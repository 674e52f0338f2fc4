// Bitmap: pixels in memory, as channel textures, thumbnails, frames and image files share them.
//
// Rows are padded to a multiple of 4 bytes. A loaded image runs top-down (the first row in memory is the
// top one); a frame bitmap runs bottom-up, as GL reads back. 32-bit pixels are blue, green, red, alpha in
// memory; 24-bit blue, green, red; 8-bit grey.
//
// A bitmap that several holders share is held as BitmapRef and never written again: sharing one is what
// "duplicate" means here, and may cross threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace pixelgrove {

struct Bitmap {
    int width = 0;
    int height = 0;
    int bitsPerPixel = 32;  // 8, 24 or 32
    bool bottomUp = false;
    std::vector<uint8_t> bits;  // height * StrideBytes()

    // (bits * width + 31) / 32 * 4, the row length of device-independent bitmaps.
    size_t StrideBytes() const { return (size_t(bitsPerPixel) * size_t(width) + 31) / 32 * 4; }
    uint8_t* Row(int memoryRow) { return bits.data() + size_t(memoryRow) * StrideBytes(); }
    const uint8_t* Row(int memoryRow) const { return bits.data() + size_t(memoryRow) * StrideBytes(); }
    // The bits are all there: what a reader checks before it trusts the sizes.
    bool IsComplete() const {
        return width > 0 && height > 0 && bits.size() >= StrideBytes() * size_t(height);
    }
};

using BitmapRef = std::shared_ptr<const Bitmap>;

// The longest side that a bitmap may have, and the most bytes: larger requests are refused.
constexpr int kMaxBitmapSide = 32768;
constexpr size_t kMaxBitmapBytes = size_t(1) << 30;

// A zeroed bitmap of the given form, or null when a size is not in 1..kMaxBitmapSide, the depth is not 8, 24
// or 32, the whole exceeds kMaxBitmapBytes, or memory is short.
std::shared_ptr<Bitmap> CreateBitmap(int width, int height, int bitsPerPixel, bool bottomUp);

// 32 bits, bottom-up: the form of frames. Null as above.
std::shared_ptr<Bitmap> CreateFrameBitmap(int width, int height);

}  // namespace pixelgrove
