// Draws one frame: updates per-frame values, feeds live textures, runs every stage in its fixed order.
//
// Render thread, with the context current.
#pragma once

#include "render/RenderContext.h"

namespace pixelgrove {

// One frame by context.uniforms, whose entry 0 is the time step. palette may be null. False for a null
// context.
bool RenderStages(RenderContext* context, const SharedPalette* palette);

// Time, frame count and targets go on as in RenderStages, and nothing is drawn: for a run whose size stays
// and whose stages don't miss the frame (render/PastFrames.h).
void SkipStages(RenderContext& context);

// The size that the next frame will have: the forced size, or the surface's client area.
SurfaceSize WantedSize(const RenderContext& context);

// iMouse from the mouse's state, by its rule: z is the click's x while the button is down, else its negative;
// w is the click's y in the first frame after the press, else its negative. Clears justPressed.
std::array<float, 4> TakeMouse();

}  // namespace pixelgrove
