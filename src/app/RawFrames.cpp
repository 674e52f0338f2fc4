#include "app/RawFrames.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

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

// Four pixels at once, as words of the machine.
void PackFour(const uint8_t* in, uint8_t* out) {
    static_assert(std::endian::native == std::endian::little);
    std::array<uint32_t, 4> pixels;
    std::memcpy(pixels.data(), in, 16);
    for (uint32_t& pixel : pixels)
        pixel = (pixel >> 16 & 0xff) | (pixel & 0xff00) | (pixel & 0xff) << 16;
    const std::array<uint32_t, 3> packed = {pixels[0] | pixels[1] << 24, pixels[1] >> 8 | pixels[2] << 16,
                                            pixels[2] >> 16 | pixels[3] << 8};
    std::memcpy(out, packed.data(), 12);
}

const uint8_t* UprightRow(const Bitmap& picture, int row) {
    return picture.Row(picture.bottomUp ? picture.height - 1 - row : row);
}

}  // namespace

void ToRgb24(const Bitmap& picture, std::vector<uint8_t>& bytes) {
    bytes.resize(size_t(picture.width) * size_t(picture.height) * 3);
    uint8_t* out = bytes.data();
    for (int y = 0; y < picture.height; ++y) {
        const uint8_t* in = UprightRow(picture, y);
        int x = 0;
        for (; x + 4 <= picture.width; x += 4, in += 16, out += 12)
            PackFour(in, out);
        for (; x < picture.width; ++x, in += 4, out += 3) {
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
        }
    }
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
    for (size_t p = 0; p < kPlanes.size(); ++p) {
        const PlaneWeights weights = kPlanes[p];
        uint8_t* out = bytes.data() + kMark.size() + p * plane;
        for (int y = 0; y < picture.height; ++y) {
            const uint8_t* in = UprightRow(picture, y);
            for (int x = 0; x < picture.width; ++x, in += 4)
                *out++ = uint8_t(
                    (weights.red * in[2] + weights.green * in[1] + weights.blue * in[0] + weights.base) >>
                    16);
        }
    }
}

}  // namespace pixelgrove
