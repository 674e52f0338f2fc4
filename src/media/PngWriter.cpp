#include "media/PngWriter.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "platform/Thread.h"

namespace pixelgrove {

namespace {

// Each strip of rows is packed by itself. Their number doesn't go by the machine, or the bytes would.
constexpr int kStrips = 4;
constexpr uint8_t kPaethFilter = 4;
constexpr size_t kStackBytes = size_t(256) << 10;

struct Strip {
    int firstRow = 0, endRow = 0;
    QByteArray packed;  // raw deflate; empty on failure
    uLong adler = 0;
    z_off_t unpackedBytes = 0;
};

size_t ChannelsOf(const Bitmap& bitmap) {
    return bitmap.bitsPerPixel == 8 ? 1 : 3;
}

// The row's bytes as PNG has them, counted from the top.
void FillRow(const Bitmap& bitmap, int y, uint8_t* out) {
    const uint8_t* in = bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - y : y);
    if (bitmap.bitsPerPixel == 8) {
        std::memcpy(out, in, size_t(bitmap.width));
        return;
    }
    const int step = bitmap.bitsPerPixel / 8;
    for (int x = 0; x < bitmap.width; ++x, in += step, out += 3) {
        out[0] = in[2];
        out[1] = in[1];
        out[2] = in[0];
    }
}

// Of left, up and their corner, the one nearest to left + up - corner.
uint8_t Predicted(int left, int up, int corner) {
    const int toLeft = std::abs(up - corner);
    const int toUp = std::abs(left - corner);
    const int toCorner = std::abs(left + up - 2 * corner);
    return uint8_t(toLeft <= toUp && toLeft <= toCorner ? left : toUp <= toCorner ? up : corner);
}

// Rows begin with a pixel of zeros.
void FilterRow(const uint8_t* row, const uint8_t* above, size_t channels, size_t bytes, uint8_t* out) {
    for (size_t i = 0; i < bytes; ++i) {
        const size_t here = i + channels;
        out[i] = uint8_t(row[here] - Predicted(row[i], above[here], above[i]));
    }
}

void PackStrip(const Bitmap& bitmap, Strip& strip) {
    const size_t channels = ChannelsOf(bitmap);
    const size_t bytes = size_t(bitmap.width) * channels;
    std::vector<uint8_t> row(bytes + channels), above(bytes + channels), filtered(bytes + 1);
    if (strip.firstRow > 0) FillRow(bitmap, strip.firstRow - 1, above.data() + channels);
    // What is left of a drawn picture behind the filter are runs: looking for nothing else is quickest, and
    // no longer match of bytes is lost on the edges of strips.
    z_stream stream{};
    if (deflateInit2(&stream, 1, Z_DEFLATED, -MAX_WBITS, 9, Z_RLE) != Z_OK) return;
    strip.unpackedBytes = z_off_t(filtered.size()) * (strip.endRow - strip.firstRow);
    QByteArray packed(qsizetype(deflateBound(&stream, uLong(strip.unpackedBytes))) + 16, Qt::Uninitialized);
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = uInt(packed.size());
    strip.adler = adler32(0, nullptr, 0);
    int result = Z_OK;
    for (int y = strip.firstRow; y < strip.endRow && result == Z_OK; ++y) {
        FillRow(bitmap, y, row.data() + channels);
        filtered[0] = kPaethFilter;
        FilterRow(row.data(), above.data(), channels, bytes, filtered.data() + 1);
        std::swap(row, above);
        strip.adler = adler32(strip.adler, filtered.data(), uInt(filtered.size()));
        stream.next_in = filtered.data();
        stream.avail_in = uInt(filtered.size());
        const bool isLast = y + 1 == strip.endRow;
        const bool isEnd = y + 1 == bitmap.height;
        result = deflate(&stream, isEnd ? Z_FINISH : isLast ? Z_SYNC_FLUSH : Z_NO_FLUSH);
    }
    const bool isWhole = (result == Z_OK || result == Z_STREAM_END) && stream.avail_in == 0;
    packed.truncate(qsizetype(stream.total_out));
    deflateEnd(&stream);
    if (isWhole) strip.packed = std::move(packed);
}

// A failure leaves the strip empty.
void TryPackStrip(const Bitmap& bitmap, Strip& strip) {
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
    file += BigEndian(uint32_t(
        crc32_z(0, reinterpret_cast<const Bytef*>(typeAndData.constData()), size_t(typeAndData.size()))));
}

}  // namespace

QByteArray EncodePng(const Bitmap& bitmap) {
    if (!bitmap.IsComplete()) return {};
    std::array<Strip, kStrips> strips;
    for (int i = 0; i < kStrips; ++i) {
        strips[size_t(i)].firstRow = int(int64_t(bitmap.height) * i / kStrips);
        strips[size_t(i)].endRow = int(int64_t(bitmap.height) * (i + 1) / kStrips);
    }
    PackStrips(bitmap, strips);

    QByteArray data("IDAT\x78\x01");  // the head of a zlib stream with a window of 32 kB
    uLong adler = adler32(0, nullptr, 0);
    for (const Strip& strip : strips) {
        if (strip.firstRow == strip.endRow) continue;
        if (strip.packed.isEmpty()) return {};
        data += strip.packed;
        adler = adler32_combine(adler, strip.adler, strip.unpackedBytes);
    }
    data += BigEndian(uint32_t(adler));

    QByteArray header = "IHDR" + BigEndian(uint32_t(bitmap.width)) + BigEndian(uint32_t(bitmap.height));
    const std::array<char, 5> form = {8, char(bitmap.bitsPerPixel == 8 ? 0 : 2), 0, 0,
                                      0};  // 8 bits, grey or colour
    header.append(form.data(), form.size());
    QByteArray file("\x89PNG\r\n\x1a\n");
    AddChunk(file, header);
    AddChunk(file, data);
    AddChunk(file, "IEND");
    return file;
}

}  // namespace pixelgrove
