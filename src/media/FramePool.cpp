#include "media/FramePool.h"

#include <new>
#include <utility>

namespace pixelgrove {

std::shared_ptr<Bitmap> FramePool::Take(int width, int height) {
    try {
        std::unique_ptr<Bitmap> bitmap = spare_->Exchange(nullptr);
        if (!bitmap || bitmap->width != width || bitmap->height != height) {
            bitmap.reset();  // before the new one needs room
            const std::shared_ptr<Bitmap> made = CreateFrameBitmap(width, height);
            if (!made) return nullptr;
            bitmap = std::make_unique<Bitmap>(std::move(*made));
        }
        const auto giveBack = [spare = spare_](Bitmap* used) {
            spare->Exchange(std::unique_ptr<Bitmap>(used));
        };
        return {bitmap.release(), giveBack};
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace pixelgrove
