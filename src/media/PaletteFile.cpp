#include "media/PaletteFile.h"

#include <QByteArray>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>

#include "platform/Files.h"

namespace pixelgrove {

namespace {

constexpr qint64 kMaxFileBytes = 1 << 20;
constexpr qsizetype kWordBytes = 4;

constexpr uint32_t kPaddedForm = 0x42004200;
constexpr uint32_t kPaddedBytes = 944;
constexpr int kPaddedColours = 236;
constexpr uint32_t kCountedForm = 0x42006900;
constexpr qsizetype kPlainBytes = 768;
constexpr int kPlainColours = 256;

// Takes `count` colours from the bytes, which hold them.
void TakeColours(QByteArrayView bytes, int count, int bytesPerColour, PaletteBlock& block) {
    block = {};
    block.count = count;
    for (int i = 0; i < count; ++i) {
        const auto* colour = reinterpret_cast<const uint8_t*>(bytes.data()) + i * bytesPerColour;
        block.red[i] = colour[0];
        block.green[i] = colour[1];
        block.blue[i] = colour[2];
    }
}

void TakePlainColours(QByteArrayView bytes, PaletteBlock& block) {
    block = {};
    block.count = kPlainColours;
    for (int i = 0; i < kPlainColours; ++i) {
        const auto* colour = reinterpret_cast<const uint8_t*>(bytes.data()) + 3 * ((i * 254) >> 8);
        block.green[i] = uint8_t(colour[0] * 4);
        block.blue[i] = uint8_t(colour[1] * 4);
        block.red[i] = uint8_t(colour[2] * 4);
    }
}

std::optional<uint32_t> WordAt(QByteArrayView bytes, qsizetype offset) {
    if (bytes.size() < offset + kWordBytes) return std::nullopt;
    return qFromLittleEndian<uint32_t>(bytes.data() + offset);
}

// The curve through a at x, which is between two entries that both have neighbours: from the middle before
// the nearest entry to the one behind it.
float OnCurve(std::span<const float> a, float x) {
    const auto k = size_t(x + 0.5f);
    const float p = a[k];
    const float f = 2 * (x - float(k));
    const float q = (p + a[k + 1]) / 2;
    const float r = (p + a[k - 1]) / 2;
    if (f <= -1) return r;
    if (f >= 1) return q;
    const float above = (q - p) * f + p;
    const float below = p - (r - p) * f;
    return ((above - below) * f + (above + below)) * 0.5f;
}

float ValueAt(std::span<const float> a, float x) {
    const float last = float(a.size()) - 1;
    if (x > 0.5f && x < last - 0.5f) return OnCurve(a, x);
    if (x <= 0) return a.front();
    if (x >= last) return a.back();
    const auto k = size_t(x);
    return a[k] + (a[k + 1] - a[k]) * (x - float(k));
}

}  // namespace

bool IsPaletteName(QStringView name) {
    return name.contains(u".pal", Qt::CaseInsensitive) || name.contains(u".col", Qt::CaseInsensitive);
}

bool ReadPalette(QByteArrayView bytes, PaletteBlock& block) {
    const std::optional<uint32_t> form = WordAt(bytes, 0), second = WordAt(bytes, kWordBytes);
    if (form == kPaddedForm) {
        const QByteArrayView colours = bytes.sliced(std::min(bytes.size(), 2 * kWordBytes));
        if (second != kPaddedBytes || colours.size() < kPaddedBytes) return false;
        TakeColours(colours, kPaddedColours, 4, block);
        return true;
    }
    if (form == kCountedForm) {
        if (!second) return false;
        const int32_t count = std::max(int32_t(*second), 0);
        const QByteArrayView colours = bytes.sliced(2 * kWordBytes);
        if (count > kMaxPaletteColours || colours.size() < 3 * count) return false;
        TakeColours(colours, count, 3, block);
        return true;
    }
    if (bytes.size() != kPlainBytes) return false;
    TakePlainColours(bytes.sliced(kWordBytes), block);
    return true;
}

bool LoadPaletteFile(const QString& path, PaletteBlock& block) {
    const std::optional<QByteArray> bytes = ReadWholeFile(path, kMaxFileBytes);
    return bytes && ReadPalette(*bytes, block);
}

bool ResamplePalette(std::span<uint8_t> channel, int sourceCount, int targetCount) {
    const auto room = std::min<qsizetype>(qsizetype(channel.size()), kMaxPaletteColours);
    if (sourceCount < 0 || sourceCount > room || targetCount < 1 || targetCount > room) return false;
    std::array<float, kMaxPaletteColours> levels;
    const std::span<float> source = std::span(levels).first(size_t(std::max(sourceCount, 1)));
    source[0] = 0;
    for (size_t i = 0; i < size_t(sourceCount); ++i)
        source[i] = float(channel[i]) / 255;
    for (int i = 0; i < targetCount; ++i) {
        // Multiplied before it is divided, which meets the last entry exactly.
        const float x = float(i * int(source.size() - 1)) / float(std::max(targetCount - 1, 1));
        const float level = std::abs(ValueAt(source, x)) * 255;
        channel[size_t(i)] = uint8_t(std::min(level, 255.0f));
    }
    return true;
}

void FillPalette(PaletteBlock& block) {
    if (block.count == kMaxPaletteColours) return;
    const int count = std::clamp(block.count, 0, kMaxPaletteColours);
    for (uint8_t* channel : {block.red, block.green, block.blue})
        ResamplePalette(std::span(channel, kMaxPaletteColours), count, kMaxPaletteColours);
    block.count = kMaxPaletteColours;
}

}  // namespace pixelgrove
