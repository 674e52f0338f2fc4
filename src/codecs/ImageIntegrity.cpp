#include "codecs/ImageIntegrity.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "codecs/PictureCodecs.h"

namespace pixelgrove {
namespace {

// Bytes of a file; those past the end read as 0, and ok turns false.
class Reader {
  public:
    explicit Reader(QByteArrayView file) : bytes(file) {}

    uint32_t U8(qint64 at) {
        if (at < 0 || at >= bytes.size()) {
            ok = false;
            return 0;
        }
        return uint8_t(bytes[at]);
    }
    uint32_t Little16(qint64 at) { return U8(at) | U8(at + 1) << 8; }
    uint32_t Little32(qint64 at) { return Little16(at) | Little16(at + 2) << 16; }
    uint32_t Big16(qint64 at) { return U8(at) << 8 | U8(at + 1); }

    QByteArrayView bytes;
    bool ok = true;
};

// Walks the segments to the end-of-image marker. A search for its two bytes alone would find the one of a
// thumbnail inside a segment, or of whatever stands behind a picture that is cut: there the walk meets a
// second start of an image, or a marker that no picture has.
bool IsJpegWhole(QByteArrayView file) {
    constexpr uint32_t kFill = 0xFF, kStart = 0xD8, kEnd = 0xD9, kScan = 0xDA;
    Reader in(file);
    qint64 at = 2;
    bool hasScan = false;
    while (in.ok) {
        if (in.U8(at) != 0xFF) {
            // Entropy-coded data, or filling between segments, up to the next marker.
            at = file.indexOf('\xFF', at);
            if (at < 0) return false;
            continue;
        }
        const uint32_t marker = in.U8(at + 1);
        if (marker == kEnd) return in.ok && hasScan;
        if (marker == kFill) {
            at += 1;
        } else if (marker == 0x00 || marker == 0x01 || (marker >= 0xD0 && marker < kStart)) {
            at += 2;  // a data byte of 255, or a marker without a segment
        } else if (marker == kStart || marker < 0xC0) {
            return false;
        } else {
            hasScan |= marker == kScan;
            at += 2 + std::max<uint32_t>(in.Big16(at + 2), 2);
        }
    }
    return false;
}

bool IsBmpWhole(QByteArrayView file) {
    constexpr int kFileHeaderBytes = 14;
    constexpr uint32_t kOldHeaderBytes = 12;  // 16-bit sizes, no compression
    Reader in(file);
    const uint32_t headerBytes = in.Little32(kFileHeaderBytes);
    const bool old = headerBytes == kOldHeaderBytes;
    const int64_t width = old ? in.Little16(18) : int32_t(in.Little32(18));
    const int64_t height = old ? in.Little16(20) : std::abs(int64_t(int32_t(in.Little32(22))));
    const int64_t depth = in.Little16(old ? 24 : 28);
    const uint32_t compression = old ? 0 : in.Little32(30);
    const uint32_t imageBytes = old ? 0 : in.Little32(34);
    if (!in.ok || width <= 0 || width > kMaxPictureSide || height <= 0 || height > kMaxPictureSide)
        return false;

    const int64_t start = std::max<int64_t>(in.Little32(10), int64_t(kFileHeaderBytes) + headerBytes);
    constexpr uint32_t kRle8 = 1, kRle4 = 2;
    if (compression == kRle8 || compression == kRle4) return start + imageBytes <= file.size();
    // Some writers leave out the padding of the last row.
    const int64_t strideBytes = (width * depth + 31) / 32 * 4;
    return start + strideBytes * (height - 1) + (width * depth + 7) / 8 <= file.size();
}

// Where the chain of data blocks that starts here ends.
qint64 SkipGifBlocks(Reader& in, qint64 at) {
    while (in.ok) {
        const uint32_t length = in.U8(at);
        at += 1 + length;
        if (length == 0) break;
    }
    return at;
}

// Walks to the first picture and through its blocks; later pictures of an animation don't count.
bool IsGifWhole(QByteArrayView file) {
    const auto paletteBytes = [](uint32_t flags) { return flags & 0x80 ? 3 << ((flags & 7) + 1) : 0; };
    Reader in(file);
    qint64 at = 13 + paletteBytes(in.U8(10));
    while (in.ok) {
        const uint32_t kind = in.U8(at);
        if (kind == 0x21) {  // extension: label, blocks
            at = SkipGifBlocks(in, at + 2);
        } else if (kind == 0x2C) {  // picture: place and size, palette, code size, blocks
            at += 10 + paletteBytes(in.U8(at + 9));
            SkipGifBlocks(in, at + 1);
            return in.ok;
        } else {
            return false;
        }
    }
    return false;
}

}  // namespace

bool IsImageFileWhole(QByteArrayView file, const QByteArray& format) {
    if (format == "jpeg" || format == "jpg") return IsJpegWhole(file);
    if (format == "bmp" || format == "dib") return IsBmpWhole(file);
    if (format == "gif") return IsGifWhole(file);
    return true;
}

QSize GifScreenSize(QByteArrayView file) {
    Reader in(file);
    const QSize size(int(in.Little16(6)), int(in.Little16(8)));
    return in.ok ? size : QSize(0, 0);
}

bool IsPlausibleImageSize(QSize size, qint64 fileBytes) {
    // Small pictures cost little whatever their header says.
    constexpr qint64 kHarmlessPixels = qint64(16) << 20;
    // A PNG of one colour with 1 bit a pixel, the best case of deflate, comes to 8,256.
    constexpr qint64 kMaxPixelsPerByte = 10000;
    const qint64 pixels = qint64(size.width()) * size.height();
    return pixels <= kHarmlessPixels || pixels / kMaxPixelsPerByte <= fileBytes;
}

}  // namespace pixelgrove
