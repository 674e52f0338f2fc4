// Rendering without a window or a display server: an OutputSurface of a fixed size on EGL.
//
// Any thread may make one; its context belongs to the thread that asked for it.
#pragma once

#include <memory>

#include "render/OutputSurface.h"

namespace pixelgrove {

// Null when EGL offers no display on which a desktop OpenGL context can be had.
std::shared_ptr<OutputSurface> CreateEglSurface(SurfaceSize size);

}  // namespace pixelgrove
