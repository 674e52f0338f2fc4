// RawFrames: pictures as the bytes that video encoders read. Pure.
#pragma once

#include <QByteArray>
#include <cstdint>
#include <vector>

#include "app/FrameClock.h"
#include "media/Bitmap.h"

namespace pixelgrove {

// Makes bytes a 32-bit bitmap's red, green and blue, upright whichever way its rows run, without padding.
void ToRgb24(const Bitmap& picture, std::vector<uint8_t>& bytes);

// The line that a YUV4MPEG2 stream opens with: square pixels, progressive, 4:4:4 of 8 bits, limited range.
QByteArray Y4mHeader(int width, int height, const FrameRate& rate);

// Makes bytes "FRAME", a line end and the planes Y, Cb, Cr of a 32-bit bitmap by BT.709 in limited range: 16
// to 235, chroma 16 to 240. Each value is the nearest.
void ToY4mFrame(const Bitmap& picture, std::vector<uint8_t>& bytes);

}  // namespace pixelgrove
