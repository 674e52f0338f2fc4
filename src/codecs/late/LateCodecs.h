// How codecs/PictureCodecs.h's functions are reached in the module that has them, which is loaded when the
// first picture comes. Program and module come from one build.
#pragma once

#include "codecs/PictureCodecs.h"

namespace pixelgrove {

constexpr const char* kCodecsModule = "pixelgrove-pictures.so";
// Its one symbol: a function that gives the table.
constexpr const char* kCodecsSymbol = "PixelgrovePictureCodecs";

struct PictureCodecs {
    decltype(&DecodePicture) decode;
    decltype(&EncodePicture) encode;
};

using GetPictureCodecs = const PictureCodecs*();

}  // namespace pixelgrove
