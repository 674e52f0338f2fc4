// QtGlContext: a GlContext on a QOpenGLContext, for a window or an off-screen surface.
//
// Made by the thread that renders with it. After Detach any thread may destroy it, or make it current and so
// own it; before that only the maker may. The surface is kept alive until the context is gone.
#pragma once

#include <QSurface>
#include <atomic>
#include <memory>

#include "render/OutputSurface.h"

namespace pixelgrove {

// What a surface and its contexts know of each other. Any thread.
struct SurfaceUse {
    std::atomic<bool> mayShow{false};  // the surface is on the screen; the main thread writes
    std::atomic<int> contexts{0};      // contexts that live on the surface
};

// Double-buffered, swap interval 0, no depth, no stencil, no version or profile asked: for the surface that a
// context is to be current on, and for a plain context.
QSurfaceFormat GlSurfaceFormat();

// A context for the surface, not yet current, with the calling thread as its owner. The surface must have
// been created by the main thread. Null when the system gives no context.
std::unique_ptr<GlContext> CreateQtGlContext(std::shared_ptr<QSurface> surface,
                                             std::shared_ptr<SurfaceUse> use, bool hasDrawable);

}  // namespace pixelgrove
