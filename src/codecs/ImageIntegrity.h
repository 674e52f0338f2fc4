// Finds image files that are cut short. The decoders of JPEG, BMP and GIF fill what is missing with grey or
// black and report success; PNG, TIFF and the others fail by themselves.
//
// Pure; any thread.
#pragma once

#include <QByteArray>
#include <QSize>

namespace pixelgrove {

// True when the file's first picture is all there, as far as its structure tells. `format` is the decoder's
// name ("jpeg", "bmp", "gif"); files of other formats pass.
bool IsImageFileWhole(QByteArrayView file, const QByteArray& format);

// The size of the picture that Qt makes of a GIF file: its screen, which no decoder tells beforehand. 0 x 0
// when the file is too short to say.
QSize GifScreenSize(QByteArrayView file);

// False for a large picture that so few bytes can't hold under any usual compression: a header that lies to
// make the decoder allocate memory.
bool IsPlausibleImageSize(QSize size, qint64 fileBytes);

}  // namespace pixelgrove
