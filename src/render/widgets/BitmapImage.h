// Bitmaps as Qt paints them.
#pragma once

#include <QImage>

#include "media/Bitmap.h"

namespace pixelgrove {

// The whole bitmap stretched to width by height pixels, top-down, each pixel taken from the nearest one with
// no filtering; alpha is dropped. 8-bit bitmaps come out grey. A null image when the bitmap is not complete,
// its depth is unknown, or a size is not above 0. Any thread.
QImage StretchedImage(const Bitmap& bitmap, int width, int height);

}  // namespace pixelgrove
