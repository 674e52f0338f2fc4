// FramePool: frame bitmaps whose memory is used again, so that a run of large frames doesn't ask the system
// for it, zeroed, each time.
//
// Owned and used by one thread; what it gives may be let go on any, and outlive it.
#pragma once

#include <memory>

#include "media/Bitmap.h"
#include "platform/SynchronizedValue.h"

namespace pixelgrove {

class FramePool {
  public:
    // A frame bitmap of that size that nobody else holds, with whatever it held last. Null as
    // CreateFrameBitmap.
    std::shared_ptr<Bitmap> Take(int width, int height);

    // Frees what waits to be used again: one bitmap at most.
    void Clear() { spare_->Exchange(nullptr); }

  private:
    using Spare = SynchronizedValue<std::unique_ptr<Bitmap>>;

    const std::shared_ptr<Spare> spare_ = std::make_shared<Spare>();
};

}  // namespace pixelgrove
