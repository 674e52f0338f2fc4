// Live textures: keyboard, audio and webcam, one of each kind for all channels of a run, and the palette's
// row.
//
// Their pictures come from render/InputState.h, media/LiveFeeds.h and the palette. Render thread, with the
// context current.
#pragma once

#include "render/RenderContext.h"

namespace pixelgrove {

constexpr int kWebcamWidth = 1280;
constexpr int kWebcamHeight = 720;

// Makes the shared texture of a Keyboard, Webcam or Audio channel, blank, at the first channel of its kind;
// keys pressed before that are forgotten, and the camera is opened, which isn't waited for. Nothing for other
// kinds.
void CreateLiveTexture(RenderContext& context, uint32_t kind);

// Brings palette row, keyboard, webcam and audio textures up to date; the webcam's on every 16th call of the
// process that has one. palette may be null.
void FeedLiveTextures(RenderContext& context, const SharedPalette* palette);

}  // namespace pixelgrove
