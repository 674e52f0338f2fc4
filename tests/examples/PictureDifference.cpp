#include "examples/PictureDifference.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

std::array<int, 3> Channels(QRgb pixel) {
    return {qRed(pixel), qGreen(pixel), qBlue(pixel)};
}

}  // namespace

PictureDifference ComparePictures(const QImage& left, const QImage& right) {
    if (left.size() != right.size() || left.isNull()) return {};
    std::array<int64_t, 3> sums{};
    int64_t farPixels = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const std::array<int, 3> a = Channels(left.pixel(x, y));
            const std::array<int, 3> b = Channels(right.pixel(x, y));
            bool isFar = false;
            for (size_t channel = 0; channel < sums.size(); ++channel) {
                const int step = std::abs(a[channel] - b[channel]);
                sums[channel] += step;
                isFar = isFar || step > kFarStep;
            }
            farPixels += isFar ? 1 : 0;
        }
    }
    const double pixels = double(left.width()) * left.height();
    return {double(*std::max_element(sums.begin(), sums.end())) / pixels, double(farPixels) / pixels};
}

bool IsAlike(const PictureDifference& difference) {
    return difference.worstChannelMean < kMaxChannelMean && difference.farShare <= kMaxFarShare;
}

int WidestChannelRange(const QImage& picture) {
    std::array<int, 3> low{255, 255, 255};
    std::array<int, 3> high{0, 0, 0};
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const std::array<int, 3> channels = Channels(picture.pixel(x, y));
            for (size_t i = 0; i < channels.size(); ++i) {
                low[i] = std::min(low[i], channels[i]);
                high[i] = std::max(high[i], channels[i]);
            }
        }
    }
    int widest = 0;
    for (size_t i = 0; i < low.size(); ++i)
        widest = std::max(widest, high[i] - low[i]);
    return widest;
}
