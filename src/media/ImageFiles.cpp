#include "media/ImageFiles.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <new>
#include <optional>
#include <utility>

#include "media/GifWriter.h"
#include "media/ImageIntegrity.h"
#include "media/PngWriter.h"
#include "platform/Files.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

constexpr qint64 kMaxImageBytes = qint64(kMaxImageMegabytes) << 20;
constexpr int kJpegQuality = 95;

// Qt takes plug-ins for many more. What this program reads comes from the network too, so it opens no more
// decoders than it needs; SVG, which can refer to other files, is not among them.
bool IsAcceptedFormat(const QByteArray& format) {
    static constexpr std::array kAccepted = {"bmp", "dib",  "png", "jpeg", "jpg", "gif",
                                             "tif", "tiff", "ppm", "pgm",  "pbm", "webp"};
    return std::any_of(kAccepted.begin(), kAccepted.end(), [&](const char* name) { return format == name; });
}

bool IsAcceptedSize(QSize size) {
    return size.width() >= 1 && size.height() >= 1 && size.width() <= kMaxBitmapSide &&
           size.height() <= kMaxBitmapSide && qint64(size.width()) * size.height() * 4 <= kMaxImageBytes;
}

enum class Fault { None, NoPicture, Damaged, TooLarge, NoRoom, NoMemory };

QString WordsFor(Fault fault, const QString& path) {
    const QString name = InQuotes(path);
    switch (fault) {
        case Fault::NoPicture:
            return QStringLiteral("%1 is no picture that can be read").arg(name);
        case Fault::Damaged:
            return QStringLiteral("%1 is damaged or cut short").arg(name);
        case Fault::TooLarge:
            return QStringLiteral("%1 has more pixels than a picture may have").arg(name);
        case Fault::NoRoom:
            return BeyondMediaMemory(path);
        case Fault::NoMemory:
            return QStringLiteral("there is not enough memory for %1").arg(name);
        case Fault::None:
            break;
    }
    return {};
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
    std::call_once(limitSet, [] { QImageReader::setAllocationLimit(kMaxImageMegabytes); });

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

// Null, with the fault, for a picture that would pass maxBytes, or when memory is short.
BitmapRef ToBitmap(QImage image, qint64 maxBytes, Fault& fault) {
    const int depth = FittingDepth(OwnDepth(image), image.width());
    fault = BitmapBytes(image.size(), depth) > maxBytes ? Fault::NoRoom : Fault::NoMemory;
    if (fault == Fault::NoRoom) return nullptr;
    const std::shared_ptr<Bitmap> bitmap = CreateBitmap(image.width(), image.height(), depth, false);
    if (!bitmap) return nullptr;

    const bool greyPalette = depth == 8 && image.format() == QImage::Format_Indexed8;
    const QList<QRgb> palette = greyPalette ? image.colorTable() : QList<QRgb>();
    if (!greyPalette) image = std::move(image).convertToFormat(FormatOfDepth(depth));
    if (image.isNull()) return nullptr;
    for (int y = 0; y < bitmap->height; ++y) {
        if (greyPalette)
            MapGreyRow(image, palette, y, bitmap->Row(y));
        else
            std::memcpy(bitmap->Row(y), image.constScanLine(y), size_t(bitmap->width) * size_t(depth / 8));
    }
    return bitmap;
}

enum class FileKind { Jpeg, Png, Gif, Tiff, Ppm, Bmp };

// Tested from the top; no kind means that the path is refused.
struct PathRule {
    const char16_t* part;
    std::optional<FileKind> kind;
};
constexpr PathRule kPathRules[] = {
    {u".jpg", FileKind::Jpeg}, {u".jpeg", FileKind::Jpeg}, {u".png", FileKind::Png}, {u".gif", FileKind::Gif},
    {u".tif", FileKind::Tiff}, {u".tiff", FileKind::Tiff}, {u".fst", std::nullopt},  {u".ful", std::nullopt},
    {u".ext", std::nullopt},   {u".ppm", FileKind::Ppm},   {u".bmp", FileKind::Bmp}, {u".dib", FileKind::Bmp},
    {u".rle", FileKind::Bmp},
};

std::optional<FileKind> KindOfPath(const QString& path) {
    for (const PathRule& rule : kPathRules)
        if (path.contains(QStringView(rule.part), Qt::CaseInsensitive)) return rule.kind;
    return std::nullopt;
}

// The bitmap upright and without alpha: grey for 8 bits, Format_RGB32 else.
QImage ToOpaqueImage(const Bitmap& bitmap) {
    const int depth = bitmap.bitsPerPixel;
    if ((depth != 8 && depth != 24 && depth != 32) || !bitmap.IsComplete()) return {};
    QImage image(bitmap.width, bitmap.height, depth == 8 ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (image.isNull()) return {};
    for (int y = 0; y < bitmap.height; ++y) {
        const uint8_t* in = bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - y : y);
        uchar* out = image.scanLine(y);
        if (depth == 8) {
            std::memcpy(out, in, size_t(bitmap.width));
            continue;
        }
        const int step = depth / 8;
        for (int x = 0; x < bitmap.width; ++x, in += step) {
            const QRgb pixel = qRgb(in[2], in[1], in[0]);
            std::memcpy(out + size_t(x) * 4, &pixel, 4);
        }
    }
    return image;
}

// Empty on failure.
QByteArray EncodeImage(const QImage& image, FileKind kind) {
    if (image.isNull()) return {};
    if (kind == FileKind::Gif) return EncodeGif(image);
    QByteArray encoded;
    QBuffer buffer(&encoded);
    if (!buffer.open(QIODevice::WriteOnly)) return {};
    QImageWriter writer;
    writer.setDevice(&buffer);
    if (kind == FileKind::Jpeg) {
        writer.setFormat("jpeg");
        writer.setQuality(kJpegQuality);
    } else if (kind == FileKind::Tiff) {
        writer.setFormat("tiff");
        writer.setCompression(1);  // LZW
    } else {
        writer.setFormat("bmp");
    }
    return writer.write(image) ? encoded : QByteArray();
}

// The memory as it is, rows and padding and fourth bytes included, taken for pixels of 3 bytes. Empty for a
// bitmap that has no such bytes.
QByteArray EncodePpm(const Bitmap& bitmap) {
    const size_t bytes = size_t(bitmap.width) * size_t(bitmap.height) * 3;
    if (bitmap.bits.size() < bytes) return {};
    const QByteArray header =
        "P6\n" + QByteArray::number(bitmap.width) + ' ' + QByteArray::number(bitmap.height) + "\n255\n";
    QByteArray file =
        header + QByteArray(reinterpret_cast<const char*>(bitmap.bits.data()), qsizetype(bytes));
    char* p = file.data() + header.size();
    for (size_t i = 0; i < bytes; i += 3)
        std::swap(p[i], p[i + 2]);
    return file;
}

QByteArray EncodeBitmap(const Bitmap& bitmap, FileKind kind) {
    if (kind == FileKind::Ppm) return EncodePpm(bitmap);
    return kind == FileKind::Png ? EncodePng(bitmap) : EncodeImage(ToOpaqueImage(bitmap), kind);
}

}  // namespace

QString BeyondMediaMemory(const QString& path) {
    return QStringLiteral("%1 would take the media of the project beyond %2 GB of memory")
        .arg(InQuotes(path))
        .arg(kMaxMediaGigabytes);
}

BitmapRef LoadImageFile(const QString& path, QString* reason, qint64 maxBytes) {
    Fault fault = Fault::NoMemory;
    ReadFailure failure;
    try {
        if (const std::optional<QByteArray> file = ReadWholeFile(path, kMaxImageBytes, &failure)) {
            QImage image = DecodeImage(*file, maxBytes, fault);
            BitmapRef bitmap = image.isNull() ? nullptr : ToBitmap(std::move(image), maxBytes, fault);
            if (bitmap) return bitmap;
        }
    } catch (const std::bad_alloc&) {
        fault = Fault::NoMemory;
    }
    if (reason)
        *reason = failure.reason.isEmpty()
                      ? WordsFor(fault, path)
                      : QStringLiteral("%1 can't be read: %2").arg(InQuotes(path), failure.reason);
    return nullptr;
}

bool SaveBitmapImage(const Bitmap& bitmap, const QString& path, QString* reason) {
    if (reason) *reason = QStringLiteral("Not a picture that can be written");
    const std::optional<FileKind> kind = KindOfPath(path);
    if (!kind || !bitmap.IsComplete()) return false;
    try {
        const QByteArray file = EncodeBitmap(bitmap, *kind);
        return !file.isEmpty() && WriteWholeFile(path, file, reason, Durability::System);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace pixelgrove
