// Picture files in memory to pixels and back, by the decoders of Qt and giflib. All of what those bring along
// is behind these two functions, so that a program can load it when a picture comes (codecs/late).
//
// Any thread; nothing is kept between calls but Qt's process-wide limit on the memory of one decoded image.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace pixelgrove {

// The longest side of a picture, and the most that it may need decoded at 32 bits.
constexpr int kMaxPictureSide = 32768;
constexpr int kMaxPictureMegabytes = 512;

enum class PictureFault { None, NoPicture, Damaged, TooLarge, NoRoom, NoMemory, NoCodecs };

// Top-down rows without padding: grey, or blue, green, red, or those and alpha.
struct DecodedPicture {
    PictureFault fault = PictureFault::None;  // nothing else counts where there is one
    QString missing;                          // what isn't there, for NoCodecs
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;  // 8, 24 or 32
    std::vector<uint8_t> bits;
};

// The first picture of a file; media/ImageFiles.h says which files and depths. maxBytes is the most that the
// bits may take: NoRoom, which the header tells as a rule. Throws std::bad_alloc.
DecodedPicture DecodePicture(const QByteArray& file, qint64 maxBytes);

// Rows from the top one on, each strideBytes further; 8 bits grey, 24 and 32 begin with blue, green, red.
struct PictureRows {
    const uint8_t* top = nullptr;
    ptrdiff_t strideBytes = 0;
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;
};

enum class PictureForm { Jpeg, Gif, Tiff, Bmp };

// The whole file, without alpha. Empty on failure; the optional reason is set where it can be told.
QByteArray EncodePicture(const PictureRows& rows, PictureForm form, QString* reason = nullptr);

}  // namespace pixelgrove
