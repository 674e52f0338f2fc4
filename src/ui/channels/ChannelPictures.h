// The pictures in the thumbnails of channels: bitmaps scaled down, and drawings for kinds without one.
//
// Pure; main thread, as all painting.
#pragma once

#include <QImage>

#include "media/Bitmap.h"

class QPainter;

namespace pixelgrove {

// The whole bitmap stretched smoothly to this many pixels, its top row on top; alpha is dropped. Null for a
// bitmap that is not complete or of an unknown depth, and for an empty size.
QImage SmoothPicture(const Bitmap& bitmap, QSize pixels);
// The same, cheap enough for every frame of a run: of large bitmaps only some pixels count.
QImage QuickPicture(const Bitmap& bitmap, QSize pixels);

// Fills the area with the drawing of a ChannelType: Unused, Cube A, Volume, Keyboard, Webcam, Audio. False
// for other kinds, and then nothing is painted.
bool PaintChannelPicture(QPainter& painter, const QRect& area, uint32_t kind);

}  // namespace pixelgrove
