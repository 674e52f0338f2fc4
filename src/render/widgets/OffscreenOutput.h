// An output surface without a window: for the OpenGL probe, and for a run that has no output window.
#pragma once

#include <memory>

#include "render/OutputSurface.h"

namespace pixelgrove {

// A surface whose client size is always the one given. Its contexts have no drawable, and bitmaps shown on it
// go nowhere. Null off the main thread or when the window system gives no off-screen surface. Main thread;
// the last reference may go on any thread.
std::shared_ptr<OutputSurface> CreateOffscreenOutput(SurfaceSize size);

}  // namespace pixelgrove
