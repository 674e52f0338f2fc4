// The off-screen targets of a stage: two frame buffers with a texture each, written in turn.
//
// Render thread, with the context current.
#pragma once

#include "core/Bitmap.h"
#include "render/RenderContext.h"

namespace pixelgrove {

// Deletes the stage's targets and makes new ones of width by height pixels in the context's format and sample
// count; Cube A is always 1024 by 1024 per face, RGBA16F, single-sampled. Contents are what the driver gives.
// writeIndex becomes 0.
void CreateStageTargets(const RenderContext& context, ShaderStage& stage, int width, int height);

void DeleteStageTargets(ShaderStage& stage);

// Copies the stage's latest picture into a bottom-up 32-bit bitmap of exactly its size. face chooses a face
// of Cube A, 0 to 5, and means nothing for other stages. False, with the bitmap as it was, when the stage is
// not drawn or the sizes or the depth differ.
bool ReadBackStage(const RenderContext& context, uint32_t stageId, Bitmap& bitmap, int face = 0);

}  // namespace pixelgrove
