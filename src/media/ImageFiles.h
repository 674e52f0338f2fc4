// Image files in and out: channel textures, cube faces and thumbnails are loaded here, recorded frames saved.
//
// Any thread; nothing is kept between calls but Qt's process-wide limit on the memory of one decoded image.
#pragma once

#include <QString>

#include "media/Bitmap.h"

namespace pixelgrove {

// The most that a file may have, and that its picture may need decoded at 32 bits.
constexpr int kMaxImageMegabytes = 512;

// The most memory that the media of one project may take together.
constexpr int kMaxMediaGigabytes = 2;
constexpr qint64 kMaxMediaBytes = qint64(kMaxMediaGigabytes) << 30;

// What a loader says of a file that would pass that.
QString BeyondMediaMemory(const QString& path);

// The first picture of a BMP, PNG, JPEG, GIF, TIFF, WebP or PBM/PGM/PPM file, top-down. The content decides
// what the file is, never its name. Backslashes in the path count as '/'.
//
// Depth: 8 bits for 8-bit grey (a palette of nothing but opaque greys too), 24 for opaque colour, each only
// where such a row is a multiple of 4 bytes; 32 for all else: alpha, coloured palettes, other sample sizes.
// Opaque pictures have alpha 255 there. Colours are those stored in the file: alpha is not multiplied in, and
// neither colour profiles nor a camera's orientation mark are applied.
//
// Null when the file is missing, is none of these, is damaged or cut short, or is too large: a side above
// kMaxBitmapSide, more than kMaxImageMegabytes decoded, or a size that the few bytes of the file can't hold.
// The size is checked before the picture is decoded. maxBytes is the most that the bitmap may take.
//
// On failure the optional reason gets a clause for the user that names the file, without a full stop:
// "\"a.png\" is damaged or cut short".
BitmapRef LoadImageFile(const QString& path, QString* reason = nullptr, qint64 maxBytes = kMaxMediaBytes);

// Writes the bitmap, whose kind of file the first of these that occurs anywhere in the path decides, whatever
// the case: .jpg .jpeg (quality 95), .png, .gif (256 colours, dithered when there are more), .tif .tiff,
// .fst .ful .ext (refused), .ppm, .bmp .dib .rle (all plain BMP). Anything else is refused.
//
// The picture stands upright in the file whichever way its rows run. Alpha is not written: frames are opaque
// pictures, whatever a shader leaves in their fourth byte. 8-bit bitmaps are written grey.
//
// A .ppm holds the bitmap's memory as it is: the first width * height * 3 bytes, first and third of every
// three swapped. That is a picture only for a top-down 24-bit bitmap whose rows have no padding.
//
// False when refused, when the bitmap is incomplete, when the path is an existing folder or device, or when
// writing fails; reason says why. An older file of that name is then as it was (see WriteWholeFile).
bool SaveBitmapImage(const Bitmap& bitmap, const QString& path, QString* reason = nullptr);

}  // namespace pixelgrove
