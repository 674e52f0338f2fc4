// The module that codecs/late loads: the room codecs, behind one symbol.

#include "codecs/late/LateCodecs.h"

extern "C" __attribute__((visibility("default"))) const pixelgrove::PictureCodecs* PixelgrovePictureCodecs() {
    static constexpr pixelgrove::PictureCodecs kCodecs{pixelgrove::DecodePicture, pixelgrove::EncodePicture};
    return &kCodecs;
}
