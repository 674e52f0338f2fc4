// Channel input textures: what each of a stage's four channels reads.
//
// File-backed kinds (Texture, Cubemap, Volume) are uploaded once, at compile time. Live kinds (Keyboard,
// Webcam, Audio) share one texture each for the whole context (LiveTextures.h). Buffer and Cube A channels
// name a stage and have no texture of their own. Render thread, with the context current.
#pragma once

#include "render/RenderContext.h"

namespace pixelgrove {

// Installs a copy of source into a stage's channel. False for a stage above 7, a channel above 3, a kind
// outside 1..8, missing bitmaps or volume data, or a source stage above 7; the kind is set all the same once
// stage and channel are good, and the medium's name and problem too.
bool SetChannel(RenderContext& context, uint32_t stage, uint32_t channelIndex, const ChannelInput& source);

// Makes the GL texture of a Texture, Cubemap or Volume channel. False, with texture name 0, when the data is
// missing or of a form that can't be uploaded: the compile fails then.
bool UploadChannelTexture(RenderContext& context, uint32_t stage, uint32_t channelIndex);

// Deletes the channel's texture and zeroes the record; an Unused channel stays as it is. Live textures stay.
// Any thread for a channel without a texture.
void ReleaseChannel(ChannelInput& channel);

}  // namespace pixelgrove
