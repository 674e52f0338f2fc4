// A surface behind which the driver hangs for as long as a test wants, with nothing to compute meanwhile.
#pragma once

#include <condition_variable>
#include <mutex>

#include "support/Engine.h"

namespace pixelgrove::test {

// Shared with the run that hangs in it; a test ends with Release. Any thread.
class HangingSurface : public ResizableSurface {
  public:
    // With the making of the context, or with a frame that is read back.
    enum class In { Context, Frame };

    explicit HangingSurface(In place) : ResizableSurface({32, 18}), place_(place) {}

    std::unique_ptr<GlContext> CreateContext() override {
        HangIn(In::Context);
        return ResizableSurface::CreateContext();
    }
    void ShowBitmap(BitmapRef bitmap) override {
        HangIn(In::Frame);
        ResizableSurface::ShowBitmap(std::move(bitmap));
    }

    bool IsHanging() const {
        const std::lock_guard hold(lock_);
        return isHanging_;
    }
    void Release() {
        const std::lock_guard hold(lock_);
        isReleased_ = true;
        released_.notify_all();
    }

  private:
    void HangIn(In place) {
        std::unique_lock hold(lock_);
        isHanging_ = place == place_ && !isReleased_;
        released_.wait(hold, [&] { return place != place_ || isReleased_; });
        isHanging_ = false;
    }

    const In place_;
    mutable std::mutex lock_;
    std::condition_variable released_;
    bool isHanging_ = false;
    bool isReleased_ = false;
};

}  // namespace pixelgrove::test
