// OutputSurface and GlContext: what the render thread needs of a place to draw, whatever stands behind it:
// the output window, an off-screen surface, or EGL without a display server.
#pragma once

#include <cstdint>
#include <memory>

#include "media/Bitmap.h"

namespace pixelgrove {

struct SurfaceSize {
    int width = 0;
    int height = 0;
    bool operator==(const SurfaceSize&) const = default;
};

// One GL context. Made by the thread that renders with it and current there alone, until Detach; then the
// next thread that makes it current has it.
class GlContext {
  public:
    virtual ~GlContext() = default;
    virtual bool MakeCurrent() = 0;
    virtual void DoneCurrent() = 0;
    // Shows the default frame buffer; nothing without a drawable.
    virtual void SwapBuffers() = 0;
    // A window's default frame buffer stands behind the context, so a blit into it is seen.
    virtual bool HasDrawable() const = 0;
    // Ends the rendering thread's hold: not current any more, and may now be destroyed by the main thread, or
    // made current by the thread of another run.
    virtual void Detach() = 0;
};

// Shared between the window and the run that draws into it; outlives both as needed.
class OutputSurface {
  public:
    virtual ~OutputSurface() = default;
    // Size in pixels; 0 by 0 while minimised or after the window was closed. Any thread.
    virtual SurfaceSize ClientSize() const = 0;
    // A new context, not yet current; null when the system gives none. Render thread.
    virtual std::unique_ptr<GlContext> CreateContext() = 0;
    // True once after what stood in the window was lost, as when it was covered while nothing draws. Any
    // thread.
    virtual bool TakeRepaintRequest() { return false; }
    // A run is given this surface, from its start until it has ended or was abandoned. Main thread.
    virtual void SetInUse(bool) {}
    // Stretches the bitmap over the whole client area. Any thread; the picture appears a little later.
    virtual void ShowBitmap(BitmapRef bitmap) = 0;
};

}  // namespace pixelgrove
