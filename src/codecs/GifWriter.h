// Encodes one picture as a GIF file in memory.
//
// Pure; any thread.
#pragma once

#include <QByteArray>
#include <QImage>

namespace pixelgrove {

// The picture in at most 256 colours: its own where it has no more, else a fixed palette with dithering.
// Empty when the image is null, a side is above 65,535, or memory is short.
QByteArray EncodeGif(const QImage& image);

}  // namespace pixelgrove
