// The off-screen targets of a stage: two frame buffers with a texture each, written in turn.
//
// Render thread, with the context current.
#pragma once

#include "media/Bitmap.h"
#include "render/RenderContext.h"

namespace pixelgrove {

// Deletes the stage's targets and makes new ones of width by height pixels in the context's format and sample
// count; Cube A is always 1024 by 1024 per face, RGBA16F, single-sampled. Contents are what the driver gives.
// writeIndex becomes 0. False when the driver has no room for pictures of that size: the stage then draws
// nothing.
bool CreateStageTargets(RenderContext& context, ShaderStage& stage, int width, int height);

void DeleteStageTargets(ShaderStage& stage);

// A single-sampled copy of a flat target in 8 bits a channel, for as long as it lives.
class ResolvedTarget {
  public:
    // Copies width by height pixels of the frame buffer's picture. No frame buffer is bound afterwards.
    ResolvedTarget(uint32_t sourceFrameBuffer, int width, int height);
    ~ResolvedTarget();
    ResolvedTarget(const ResolvedTarget&) = delete;
    ResolvedTarget& operator=(const ResolvedTarget&) = delete;
    uint32_t Texture() const { return texture_; }

  private:
    uint32_t texture_ = 0;
    uint32_t frameBuffer_ = 0;
};

// Copies the stage's latest picture into a bottom-up 32-bit bitmap of exactly its size. face chooses a face
// of Cube A, 0 to 5, and means nothing for other stages. False, with the bitmap as it was, when the stage is
// not drawn or the sizes or the depth differ. What large pictures are copied into on their way is kept for
// the next one.
bool ReadBackStage(RenderContext& context, uint32_t stageId, Bitmap& bitmap, int face = 0);

// Frees what ReadBackStage keeps.
void DropReadBackTarget(RenderContext& context);

}  // namespace pixelgrove
