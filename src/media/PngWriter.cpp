#include "media/PngWriter.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include "media/BitmapRows.h"
#include "media/RunDeflater.h"
#include "platform/Thread.h"

namespace pixelgrove {

namespace {

// Each strip of rows is packed by itself. Their number doesn't go by the machine, or the bytes would.
constexpr int kStrips = 4;
constexpr uint8_t kPaethFilter = 4;
constexpr size_t kStackBytes = size_t(256) << 10;
constexpr size_t kFilterStep = 32;
static_assert(size_t(kMaxBitmapSide) * 3 + 1 <= RunDeflater::kBlockBytes);

struct Strip {
    int firstRow = 0, endRow = 0;
    QByteArray packed;  // raw deflate; empty on failure
    uLong crc = 0;      // of what is packed
    uLong adler = 0;    // of what was there before
    z_off_t unpackedBytes = 0;
};

uLong CrcOf(QByteArrayView bytes, uLong before = 0) {
    return crc32_z(before, reinterpret_cast<const Bytef*>(bytes.data()), size_t(bytes.size()));
}

size_t ChannelsOf(const Bitmap& bitmap) {
    return bitmap.bitsPerPixel == 8 ? 1 : 3;
}

// The row's bytes as PNG has them, counted from the top.
void FillRow(const Bitmap& bitmap, int y, uint8_t* out) {
    if (bitmap.bitsPerPixel == 8)
        std::memcpy(out, bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - y : y), size_t(bitmap.width));
    else
        UprightRgbRow(bitmap, y, out);
}

int16_t Magnitude(int16_t number) {
    return std::max(number, int16_t(-number));
}

// Of left, up and their corner, the one nearest to left + up - corner. By masks, which the compiler turns
// into instructions for many bytes at once.
uint8_t Predicted(int16_t left, int16_t up, int16_t corner) {
    const auto fromLeft = int16_t(up - corner), fromUp = int16_t(left - corner);
    const int16_t toLeft = Magnitude(fromLeft), toUp = Magnitude(fromUp);
    const int16_t nearest = std::min(std::min(toLeft, toUp), Magnitude(int16_t(fromLeft + fromUp)));
    const auto isLeft = int16_t(-(toLeft == nearest)), isUp = int16_t(-(toUp == nearest));
    const auto other = int16_t((up & isUp) | (corner & ~isUp));
    return uint8_t((left & isLeft) | (other & ~isLeft));
}

// Rows begin with a pixel of zeros; all three have a step's bytes behind their end, for the last step. Steps
// of a fixed length on arrays of their own are what every compiler turns into vectors.
void FilterRow(const uint8_t* row, const uint8_t* above, size_t channels, size_t bytes, uint8_t* out) {
    for (size_t i = 0; i < bytes; i += kFilterStep) {
        std::array<uint8_t, kFilterStep> here, left, up, corner, result;
        std::memcpy(here.data(), row + i + channels, kFilterStep);
        std::memcpy(left.data(), row + i, kFilterStep);
        std::memcpy(up.data(), above + i + channels, kFilterStep);
        std::memcpy(corner.data(), above + i, kFilterStep);
        for (size_t k = 0; k < kFilterStep; ++k)
            result[k] = uint8_t(here[k] - Predicted(left[k], up[k], corner[k]));
        std::memcpy(out + i, result.data(), kFilterStep);
    }
}

void PackStrip(const Bitmap& bitmap, Strip& strip) {
    const size_t channels = ChannelsOf(bitmap);
    const size_t bytes = size_t(bitmap.width) * channels;
    const size_t lineBytes = bytes + 1;
    const auto rows = size_t(strip.endRow - strip.firstRow);
    const size_t blockRows = RunDeflater::kBlockBytes / lineBytes;
    std::vector<uint8_t> row(bytes + channels + kFilterStep), above(row.size());
    const size_t blockBytes = lineBytes * std::min(blockRows, rows);
    std::vector<uint8_t> block(blockBytes + kFilterStep);
    QByteArray packed(qsizetype(RunDeflater::MostBytes(lineBytes * rows, rows / blockRows + 1)),
                      Qt::Uninitialized);
    const auto deflater = std::make_unique<RunDeflater>(reinterpret_cast<uint8_t*>(packed.data()));
    if (strip.firstRow > 0) FillRow(bitmap, strip.firstRow - 1, above.data() + channels);
    strip.unpackedBytes = z_off_t(lineBytes * rows);
    strip.adler = adler32(0, nullptr, 0);
    const bool isLast = strip.endRow == bitmap.height;
    uint8_t* line = block.data();
    for (int y = strip.firstRow; y < strip.endRow; ++y) {
        FillRow(bitmap, y, row.data() + channels);
        *line = kPaethFilter;
        FilterRow(row.data(), above.data(), channels, bytes, line + 1);
        line += lineBytes;
        std::swap(row, above);
        const bool isEnd = y + 1 == strip.endRow;
        if (!isEnd && line < block.data() + blockBytes) continue;
        const std::span filled(block.data(), line);
        strip.adler = adler32_z(strip.adler, filled.data(), filled.size());
        deflater->AddBlock(filled, isEnd && isLast);
        line = block.data();
    }
    packed.truncate(qsizetype(deflater->EndPart(isLast)));
    strip.crc = CrcOf(packed);
    strip.packed = std::move(packed);
}

// A failure leaves the strip empty, as one without rows is.
void TryPackStrip(const Bitmap& bitmap, Strip& strip) {
    if (strip.firstRow == strip.endRow) return;
    try {
        PackStrip(bitmap, strip);
    } catch (const std::bad_alloc&) {
        strip.packed.clear();
    }
}

void PackStrips(const Bitmap& bitmap, std::array<Strip, kStrips>& strips) {
    std::array<Thread, kStrips - 1> threads;
    for (size_t i = 1; i < strips.size(); ++i) {
        Strip& strip = strips[i];
        if (!threads[i - 1].Start(kStackBytes, [&] { TryPackStrip(bitmap, strip); }))
            TryPackStrip(bitmap, strip);
    }
    TryPackStrip(bitmap, strips[0]);
}

QByteArray BigEndian(uint32_t number) {
    const std::array<char, 4> bytes = {char(number >> 24), char(number >> 16), char(number >> 8),
                                       char(number)};
    return QByteArray(bytes.data(), bytes.size());
}

void AddChunk(QByteArray& file, const QByteArray& typeAndData) {
    file += BigEndian(uint32_t(typeAndData.size() - 4));
    file += typeAndData;
    file += BigEndian(uint32_t(CrcOf(typeAndData)));
}

// The picture's chunk. False without a strip.
bool AddPicture(QByteArray& file, const std::array<Strip, kStrips>& strips) {
    const QByteArray head("IDAT\x78\x01");  // a zlib stream with a window of 32 kB
    uLong adler = adler32(0, nullptr, 0);
    uLong crc = CrcOf(head);
    qsizetype bytes = head.size();
    for (const Strip& strip : strips) {
        if (strip.firstRow == strip.endRow) continue;
        if (strip.packed.isEmpty()) return false;
        adler = adler32_combine(adler, strip.adler, strip.unpackedBytes);
        crc = crc32_combine(crc, strip.crc, z_off_t(strip.packed.size()));
        bytes += strip.packed.size();
    }
    const QByteArray end = BigEndian(uint32_t(adler));
    file.reserve(file.size() + bytes + 64);
    file += BigEndian(uint32_t(bytes + end.size() - 4)) + head;
    for (const Strip& strip : strips)
        file += strip.packed;
    file += end + BigEndian(uint32_t(CrcOf(end, crc)));
    return true;
}

}  // namespace

QByteArray EncodePng(const Bitmap& bitmap) try {
    if (!bitmap.IsComplete()) return {};
    std::array<Strip, kStrips> strips;
    for (int i = 0; i < kStrips; ++i) {
        strips[size_t(i)].firstRow = int(int64_t(bitmap.height) * i / kStrips);
        strips[size_t(i)].endRow = int(int64_t(bitmap.height) * (i + 1) / kStrips);
    }
    PackStrips(bitmap, strips);

    QByteArray header = "IHDR" + BigEndian(uint32_t(bitmap.width)) + BigEndian(uint32_t(bitmap.height));
    const std::array<char, 5> form = {8, char(bitmap.bitsPerPixel == 8 ? 0 : 2), 0, 0,
                                      0};  // 8 bits, grey or colour
    header.append(form.data(), form.size());
    QByteArray file("\x89PNG\r\n\x1a\n");
    AddChunk(file, header);
    if (!AddPicture(file, strips)) return {};
    AddChunk(file, "IEND");
    return file;
} catch (const std::bad_alloc&) {
    return {};
}

}  // namespace pixelgrove
