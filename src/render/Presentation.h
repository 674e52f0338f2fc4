// From a due frame to pixels on the screen: values, stages, one of the two present paths, previews.
//
// Render thread, with the context current.
#pragma once

#include "render/RenderThread.h"

namespace pixelgrove {

// One frame of width by height, shown. False when the size has no area or there is nothing to show it with.
bool RenderAndPresent(RenderRun& run, int width, int height);

// Goes to the place in time that was asked for since the last frame, if any, and reports the time.
void TakeTimeRequest(RenderRun& run);

// Leaves the last frame drawn where the main thread asked for it; nothing without a request.
void GivePicture(RenderRun& run);

// Blits Image's target, the one before the frame just drawn, into the window and swaps. Nothing without a
// drawable.
void PresentByBlit(RenderContext& context);

// Milliseconds since the first frame of this process: the time base of live controls.
float MsSinceFirstFrame();

}  // namespace pixelgrove
