#include "codecs/PictureCodecs.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <utility>

#include "codecs/GifWriter.h"
#include "codecs/ImageIntegrity.h"

namespace pixelgrove {
namespace {

using Fault = PictureFault;

constexpr qint64 kMaxImageBytes = qint64(kMaxPictureMegabytes) << 20;
constexpr int kJpegQuality = 95;

// Qt takes plug-ins for many more. What this program reads comes from the network too, so it opens no more
// decoders than it needs; SVG, which can refer to other files, is not among them.
bool IsAcceptedFormat(const QByteArray& format) {
    static constexpr std::array kAccepted = {"bmp", "dib",  "png", "jpeg", "jpg", "gif",
                                             "tif", "tiff", "ppm", "pgm",  "pbm", "webp"};
    return std::any_of(kAccepted.begin(), kAccepted.end(), [&](const char* name) { return format == name; });
}

bool IsAcceptedSize(QSize size) {
    return size.width() >= 1 && size.height() >= 1 && size.width() <= kMaxPictureSide &&
           size.height() <= kMaxPictureSide && qint64(size.width()) * size.height() * 4 <= kMaxImageBytes;
}

bool IsOpaqueGrey(QRgb colour) {
    return qAlpha(colour) == 255 && qRed(colour) == qGreen(colour) && qGreen(colour) == qBlue(colour);
}

// Of an Indexed8 picture the least, which the palette decides.
int LeastDepth(QImage::Format format) {
    switch (format) {
        case QImage::Format_Invalid:  // the decoder doesn't tell beforehand
        case QImage::Format_Grayscale8:
        case QImage::Format_Indexed8:
            return 8;
        case QImage::Format_RGB32:
        case QImage::Format_RGB888:
        case QImage::Format_BGR888:
        case QImage::Format_RGBX8888:
            return 24;
        default:
            return 32;
    }
}

int OwnDepth(const QImage& image) {
    const QList<QRgb> palette = image.colorTable();
    if (image.format() == QImage::Format_Indexed8 && !std::ranges::all_of(palette, IsOpaqueGrey)) return 32;
    return LeastDepth(image.format());
}

// The depth of a bitmap of that width, whose rows have no padding.
int FittingDepth(int depth, int width) {
    return qint64(width) * (depth / 8) % 4 == 0 ? depth : 32;
}

qint64 BitmapBytes(QSize size, int depth) {
    return qint64(size.width()) * size.height() * (depth / 8);
}

// A size that the header tells, or that came out.
Fault FaultOfSize(QSize size, qint64 fileBytes) {
    if (size.width() < 1 || size.height() < 1) return Fault::Damaged;
    if (!IsAcceptedSize(size)) return Fault::TooLarge;
    return IsPlausibleImageSize(size, fileBytes) ? Fault::None : Fault::Damaged;
}

// The first picture as Qt decodes it, or a null image and the fault.
QImage DecodeImage(const QByteArray& file, qint64 maxBytes, Fault& fault) {
    static std::once_flag limitSet;
    std::call_once(limitSet, [] { QImageReader::setAllocationLimit(kMaxPictureMegabytes); });

    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(false);
    const QByteArray format = reader.format();
    fault = !IsAcceptedFormat(format)         ? Fault::NoPicture
            : !IsImageFileWhole(file, format) ? Fault::Damaged
                                              : Fault::None;
    if (fault != Fault::None) return {};

    // A format that can't tell its size beforehand is held by Qt's own limit.
    const QSize size = format == "gif" ? GifScreenSize(file) : reader.size();
    if (size.isValid()) {
        fault = FaultOfSize(size, file.size());
        const int leastDepth = FittingDepth(LeastDepth(reader.imageFormat()), size.width());
        if (fault == Fault::None && BitmapBytes(size, leastDepth) > maxBytes) fault = Fault::NoRoom;
        if (fault != Fault::None) return {};
    }
    QImage image = reader.read();
    fault = FaultOfSize(image.size(), file.size());
    return fault == Fault::None ? image : QImage();
}

QImage::Format FormatOfDepth(int depth) {
    if (depth == 8) return QImage::Format_Grayscale8;
    return depth == 24 ? QImage::Format_BGR888 : QImage::Format_ARGB32;
}

// Grey palettes need not be in order. Indices past the palette's end come out black.
void MapGreyRow(const QImage& image, const QList<QRgb>& palette, int row, uint8_t* out) {
    const uchar* in = image.constScanLine(row);
    for (int x = 0; x < image.width(); ++x)
        out[x] = in[x] < palette.size() ? uint8_t(qBlue(palette[in[x]])) : uint8_t(0);
}

// Into rows of the depth that keeps what the picture has.
DecodedPicture ToRows(QImage image, qint64 maxBytes) {
    DecodedPicture picture;
    picture.width = image.width();
    picture.height = image.height();
    const int depth = picture.bitsPerPixel = FittingDepth(OwnDepth(image), image.width());
    const qint64 bytes = BitmapBytes(image.size(), depth);
    picture.fault = bytes > maxBytes ? Fault::NoRoom : Fault::NoMemory;
    if (picture.fault == Fault::NoRoom) return picture;

    picture.bits.resize(size_t(bytes));
    const bool greyPalette = depth == 8 && image.format() == QImage::Format_Indexed8;
    const QList<QRgb> palette = greyPalette ? image.colorTable() : QList<QRgb>();
    if (!greyPalette) image = std::move(image).convertToFormat(FormatOfDepth(depth));
    if (image.isNull()) return picture;
    const size_t rowBytes = size_t(picture.width) * size_t(depth / 8);
    for (int y = 0; y < picture.height; ++y) {
        uint8_t* const row = picture.bits.data() + size_t(y) * rowBytes;
        if (greyPalette)
            MapGreyRow(image, palette, y, row);
        else
            std::memcpy(row, image.constScanLine(y), rowBytes);
    }
    picture.fault = Fault::None;
    return picture;
}

// Upright and without alpha: grey for 8 bits, Format_RGB32 else.
QImage ToOpaqueImage(const PictureRows& rows) {
    const int depth = rows.bitsPerPixel;
    if (!rows.top || (depth != 8 && depth != 24 && depth != 32)) return {};
    QImage image(rows.width, rows.height, depth == 8 ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (image.isNull()) return {};
    for (int y = 0; y < rows.height; ++y) {
        const uint8_t* in = rows.top + y * rows.strideBytes;
        uchar* out = image.scanLine(y);
        if (depth == 8) {
            std::memcpy(out, in, size_t(rows.width));
            continue;
        }
        const int step = depth / 8;
        for (int x = 0; x < rows.width; ++x, in += step) {
            const QRgb pixel = qRgb(in[2], in[1], in[0]);
            std::memcpy(out + size_t(x) * 4, &pixel, 4);
        }
    }
    return image;
}

}  // namespace

DecodedPicture DecodePicture(const QByteArray& file, qint64 maxBytes) {
    DecodedPicture refused;
    const QImage image = DecodeImage(file, maxBytes, refused.fault);
    return image.isNull() ? refused : ToRows(image, maxBytes);
}

QByteArray EncodePicture(const PictureRows& rows, PictureForm form, QString*) {
    const QImage image = ToOpaqueImage(rows);
    if (image.isNull()) return {};
    if (form == PictureForm::Gif) return EncodeGif(image);
    QByteArray encoded;
    QBuffer buffer(&encoded);
    if (!buffer.open(QIODevice::WriteOnly)) return {};
    QImageWriter writer;
    writer.setDevice(&buffer);
    if (form == PictureForm::Jpeg) {
        writer.setFormat("jpeg");
        writer.setQuality(kJpegQuality);
    } else if (form == PictureForm::Tiff) {
        writer.setFormat("tiff");
        writer.setCompression(1);  // LZW
    } else {
        writer.setFormat("bmp");
    }
    return writer.write(image) ? encoded : QByteArray();
}

}  // namespace pixelgrove
