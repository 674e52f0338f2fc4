#include "codecs/GifWriter.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <new>
#include <vector>

namespace pixelgrove {
namespace {

constexpr int kMaxGifSide = 65535;
constexpr int kColourBits = 8;

// Called from C, through which no exception may pass: a count of 0 ends the encoding.
int AppendBytes(GifFileType* gif, const GifByteType* bytes, int count) {
    try {
        static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), count);
        return count;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

// The palette must have a power of two entries: always 256, the unused ones black.
std::array<GifColorType, 1 << kColourBits> PaletteOf(const QImage& image) {
    std::array<GifColorType, 1 << kColourBits> palette{};
    const QList<QRgb> colours = image.colorTable();
    const qsizetype count = std::min<qsizetype>(colours.size(), qsizetype(palette.size()));
    for (qsizetype i = 0; i < count; ++i)
        palette[size_t(i)] = {GifByteType(qRed(colours[i])), GifByteType(qGreen(colours[i])),
                              GifByteType(qBlue(colours[i]))};
    return palette;
}

// `line` is room for one row: the library masks in place what it is given.
bool PutPicture(GifFileType* gif, const QImage& image, std::vector<GifPixelType>& line) {
    const auto palette = PaletteOf(image);
    ColorMapObject* map = GifMakeMapObject(int(palette.size()), palette.data());
    if (!map) return false;
    const int width = image.width();
    const bool begun = EGifPutScreenDesc(gif, width, image.height(), kColourBits, 0, map) == GIF_OK &&
                       EGifPutImageDesc(gif, 0, 0, width, image.height(), false, nullptr) == GIF_OK;
    GifFreeMapObject(map);  // the library keeps a copy of its own
    if (!begun) return false;

    for (int y = 0; y < image.height(); ++y) {
        std::copy_n(image.constScanLine(y), width, line.begin());
        if (EGifPutLine(gif, line.data(), width) != GIF_OK) return false;
    }
    return true;
}

}  // namespace

QByteArray EncodeGif(const QImage& image) {
    if (image.isNull() || image.width() > kMaxGifSide || image.height() > kMaxGifSide) return {};
    const QImage indexed = image.convertToFormat(QImage::Format_Indexed8);
    if (indexed.isNull()) return {};
    std::vector<GifPixelType> line(static_cast<size_t>(indexed.width()));

    QByteArray encoded;
    int error = 0;
    GifFileType* gif = EGifOpen(&encoded, AppendBytes, &error);
    if (!gif) return {};
    const bool put = PutPicture(gif, indexed, line);
    const bool closed = EGifCloseFile(gif, &error) == GIF_OK;
    return put && closed ? encoded : QByteArray();
}

}  // namespace pixelgrove
