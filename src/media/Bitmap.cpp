#include "media/Bitmap.h"

#include <new>

namespace pixelgrove {

std::shared_ptr<Bitmap> CreateBitmap(int width, int height, int bitsPerPixel, bool bottomUp) {
    if (width < 1 || width > kMaxBitmapSide || height < 1 || height > kMaxBitmapSide) return nullptr;
    if (bitsPerPixel != 8 && bitsPerPixel != 24 && bitsPerPixel != 32) return nullptr;
    try {
        auto bitmap = std::make_shared<Bitmap>();
        bitmap->width = width;
        bitmap->height = height;
        bitmap->bitsPerPixel = bitsPerPixel;
        bitmap->bottomUp = bottomUp;
        const size_t bytes = bitmap->StrideBytes() * size_t(height);
        if (bytes > kMaxBitmapBytes) return nullptr;
        bitmap->bits.resize(bytes);
        return bitmap;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::shared_ptr<Bitmap> CreateFrameBitmap(int width, int height) {
    return CreateBitmap(width, height, 32, true);
}

}  // namespace pixelgrove
