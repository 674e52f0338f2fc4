// PNG files, packed for speed: recorded frames wait for this more than for anything else.
//
// Any thread; packs on several threads of its own.
#pragma once

#include <QByteArray>

#include "media/Bitmap.h"

namespace pixelgrove {

// A PNG file of a complete bitmap: upright, without alpha, grey for 8 bits. The same picture gives the same
// bytes on every machine. Empty for an incomplete bitmap and when memory is short.
QByteArray EncodePng(const Bitmap& bitmap);

}  // namespace pixelgrove
