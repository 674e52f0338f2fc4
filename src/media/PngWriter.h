// PNG files, packed for speed: recorded frames wait for this more than for anything else.
//
// Any thread; packs on several threads of its own.
#pragma once

#include <QByteArray>
#include <QImage>

namespace pixelgrove {

// A PNG file of a Grayscale8 or RGB32 picture, whose alpha is left out. The same picture gives the same bytes
// on every machine. Empty for other formats and when memory is short.
QByteArray EncodePng(const QImage& image);

}  // namespace pixelgrove
