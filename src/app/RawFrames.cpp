#include "app/RawFrames.h"

#include <algorithm>
#include <array>

#include "media/BitmapRows.h"

namespace pixelgrove {

namespace {

// Weights of red, green and blue in 65536ths, and what black and greys have, with a half for rounding.
struct PlaneWeights {
    int red, green, blue, base;
};

constexpr int Fixed(double value) {
    return int(value * 65536.0 + (value < 0.0 ? -0.5 : 0.5));
}

constexpr double kRed = 0.2126, kBlue = 0.0722;  // of BT.709's luma; green has the rest
constexpr double kLuma = 219.0 / 255.0, kChroma = 224.0 / 255.0;

constexpr PlaneWeights LumaWeights() {
    const int red = Fixed(kLuma * kRed), blue = Fixed(kLuma * kBlue);
    return {red, Fixed(kLuma) - red - blue, blue, (16 << 16) + 32768};
}

// The weights add up to nothing, so that greys have no colour.
constexpr PlaneWeights ChromaWeights(double own, double other, bool isRed) {
    const int strong = Fixed(kChroma / 2.0), weak = Fixed(-kChroma / 2.0 * other / (1.0 - own));
    const int green = -strong - weak;
    return {isRed ? strong : weak, green, isRed ? weak : strong, (128 << 16) + 32768};
}

constexpr std::array kPlanes = {LumaWeights(), ChromaWeights(kBlue, kRed, false),
                                ChromaWeights(kRed, kBlue, true)};

// What a value of each channel, blue first, adds to the planes; blue brings the bases. Y and Cb stand in one
// number, from the 32nd bit on the latter: sums of whole pixels are below that in each half.
struct PlaneTables {
    std::array<std::array<uint64_t, 256>, 3> lumaAndBlue;
    std::array<std::array<uint32_t, 256>, 3> red;
};

constexpr PlaneTables MakePlaneTables() {
    PlaneTables tables{};
    for (int channel = 0; channel < 3; ++channel) {
        std::array<int64_t, 3> weights{}, bases{};
        for (size_t p = 0; p < kPlanes.size(); ++p) {
            const PlaneWeights& plane = kPlanes[p];
            weights[p] = channel == 0 ? plane.blue : channel == 1 ? plane.green : plane.red;
            bases[p] = channel == 0 ? plane.base : 0;
        }
        for (int value = 0; value < 256; ++value) {
            const auto part = [&](size_t p) { return uint64_t(weights[p] * value + bases[p]); };
            tables.lumaAndBlue[size_t(channel)][size_t(value)] = part(0) + (part(1) << 32);
            tables.red[size_t(channel)][size_t(value)] = uint32_t(part(2));
        }
    }
    return tables;
}

constexpr PlaneTables kTables = MakePlaneTables();

}  // namespace

void ToRgb24(const Bitmap& picture, std::vector<uint8_t>& bytes) {
    const size_t rowBytes = size_t(picture.width) * 3;
    bytes.resize(rowBytes * size_t(picture.height));
    for (int y = 0; y < picture.height; ++y)
        UprightRgbRow(picture, y, bytes.data() + size_t(y) * rowBytes);
}

QByteArray Y4mHeader(int width, int height, const FrameRate& rate) {
    return "YUV4MPEG2 W" + QByteArray::number(width) + " H" + QByteArray::number(height) + " F" +
           QByteArray::number(qint64(rate.frames)) + ':' + QByteArray::number(qint64(rate.seconds)) +
           " Ip A1:1 C444 XCOLORRANGE=LIMITED\n";
}

void ToY4mFrame(const Bitmap& picture, std::vector<uint8_t>& bytes) {
    static constexpr std::array<uint8_t, 6> kMark = {'F', 'R', 'A', 'M', 'E', '\n'};
    const size_t plane = size_t(picture.width) * size_t(picture.height);
    bytes.resize(kMark.size() + 3 * plane);
    std::ranges::copy(kMark, bytes.begin());
    uint8_t* out = bytes.data() + kMark.size();
    for (int y = 0; y < picture.height; ++y) {
        const uint8_t* in = picture.Row(picture.bottomUp ? picture.height - 1 - y : y);
        for (int x = 0; x < picture.width; ++x, ++out, in += 4) {
            const auto& [ofBlue, ofGreen, ofRed] = kTables.lumaAndBlue;
            const uint64_t lumaAndBlue = ofBlue[in[0]] + ofGreen[in[1]] + ofRed[in[2]];
            const uint32_t red = kTables.red[0][in[0]] + kTables.red[1][in[1]] + kTables.red[2][in[2]];
            out[0] = uint8_t(lumaAndBlue >> 16);
            out[plane] = uint8_t(lumaAndBlue >> 48);
            out[2 * plane] = uint8_t(red >> 16);
        }
    }
}

}  // namespace pixelgrove
