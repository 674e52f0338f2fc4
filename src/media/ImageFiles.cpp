#include "media/ImageFiles.h"

#include <new>
#include <optional>
#include <utility>

#include "codecs/PictureCodecs.h"
#include "media/PngWriter.h"
#include "platform/Files.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

static_assert(kMaxPictureMegabytes == kMaxImageMegabytes && kMaxPictureSide == kMaxBitmapSide);
constexpr qint64 kMaxImageBytes = qint64(kMaxImageMegabytes) << 20;

using Fault = PictureFault;

QString WordsFor(Fault fault, const QString& missing, const QString& path) {
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
        case Fault::NoCodecs:
            return QStringLiteral("%1 can't be read: %2").arg(name, missing);
        case Fault::None:
            break;
    }
    return {};
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

PictureForm FormOf(FileKind kind) {
    switch (kind) {
        case FileKind::Jpeg:
            return PictureForm::Jpeg;
        case FileKind::Gif:
            return PictureForm::Gif;
        case FileKind::Tiff:
            return PictureForm::Tiff;
        default:
            return PictureForm::Bmp;
    }
}

PictureRows RowsOf(const Bitmap& bitmap) {
    const auto stride = ptrdiff_t(bitmap.StrideBytes());
    return {bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 : 0), bitmap.bottomUp ? -stride : stride,
            bitmap.width, bitmap.height, bitmap.bitsPerPixel};
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

QByteArray EncodeBitmap(const Bitmap& bitmap, FileKind kind, QString* reason) {
    if (kind == FileKind::Ppm) return EncodePpm(bitmap);
    if (kind == FileKind::Png) return EncodePng(bitmap);
    return EncodePicture(RowsOf(bitmap), FormOf(kind), reason);
}

}  // namespace

QString BeyondMediaMemory(const QString& path) {
    return QStringLiteral("%1 would take the media of the project beyond %2 GB of memory")
        .arg(InQuotes(path))
        .arg(kMaxMediaGigabytes);
}

BitmapRef LoadImageFile(const QString& path, QString* reason, qint64 maxBytes) {
    DecodedPicture picture;
    ReadFailure failure;
    try {
        if (const std::optional<QByteArray> file = ReadWholeFile(path, kMaxImageBytes, &failure)) {
            picture = DecodePicture(*file, maxBytes);
            if (picture.fault == Fault::None) {
                return std::make_shared<Bitmap>(Bitmap{picture.width, picture.height, picture.bitsPerPixel,
                                                       false, std::move(picture.bits)});
            }
        } else {
            picture.fault = Fault::NoMemory;
        }
    } catch (const std::bad_alloc&) {
        picture.fault = Fault::NoMemory;
    }
    if (reason)
        *reason = failure.reason.isEmpty()
                      ? WordsFor(picture.fault, picture.missing, path)
                      : QStringLiteral("%1 can't be read: %2").arg(InQuotes(path), failure.reason);
    return nullptr;
}

bool SaveBitmapImage(const Bitmap& bitmap, const QString& path, QString* reason) {
    if (reason) *reason = QStringLiteral("Not a picture that can be written");
    const std::optional<FileKind> kind = KindOfPath(path);
    if (!kind || !bitmap.IsComplete()) return false;
    try {
        const QByteArray file = EncodeBitmap(bitmap, *kind, reason);
        return !file.isEmpty() && WriteWholeFile(path, file, reason, Durability::System);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace pixelgrove
