// Bitmap rows without their padding, as texture uploads and writers of raw pixels want them.
//
// Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "media/Bitmap.h"

namespace pixelgrove {

// height rows of width * bitsPerPixel / 8 bytes with no gap between them, in memory order; with vflip the
// last row in memory comes first. Whether the bitmap is bottom-up plays no part. Nothing when the depth is
// not 8, 24 or 32, the bitmap's bits are not all there, or memory is short.
std::optional<std::vector<uint8_t>> RepackBitmapRows(const Bitmap& bitmap, bool vflip);

// Row y from the top of a complete 24- or 32-bit bitmap, whichever way its rows run: red, green and blue of
// each pixel.
void UprightRgbRow(const Bitmap& bitmap, int y, uint8_t* out);

}  // namespace pixelgrove
