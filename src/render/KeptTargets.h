// KeptTargets: how a run goes on with the pictures of another whose place it takes, in the same GL context,
// as when a project was changed by another program while it plays.
//
// A stage that both have goes on with its picture where size, format and samples are as they were. They stay
// with the record until the new project is compiled, so that a text that doesn't compile loses none.
//
// Render thread, with the context current.
#pragma once

#include "render/RenderContext.h"

namespace pixelgrove {

// Takes the pictures out of the context of a run that has ended, and deletes all else that it has in GL.
// Nothing when there is no picture.
std::optional<KeptTargets> LeavePictures(RenderContext& past);

// There is a picture for the stage that fits.
bool HasKeptPicture(const RenderContext& context, uint32_t stage);

// Gives the stages their pictures; those of stages that had none are clear. To be called once the project is
// compiled. False when there were none, or one of a stage that is there still didn't fit.
bool TakeKeptPictures(RenderContext& context);

}  // namespace pixelgrove
