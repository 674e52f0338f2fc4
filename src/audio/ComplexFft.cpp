#include "audio/ComplexFft.h"

#include <cmath>

namespace pixelgrove {

namespace {

constexpr double kFullTurn = 6.283185307179586;

}  // namespace

ComplexFft::ComplexFft() {
    size_t size = kMaxSize / 2;
    for (Level& level : levels_) {
        level.even.resize(size);
        level.odd.resize(size);
        size /= 2;
    }
}

void ComplexFft::TransformLevel(std::complex<double>* data, int n, size_t level) {
    if (n < 2) return;
    const int half = n / 2;
    std::complex<double>* even = levels_[level].even.data();
    std::complex<double>* odd = levels_[level].odd.data();
    for (int i = 0; i < half; ++i) {
        even[i] = data[2 * i];
        odd[i] = data[2 * i + 1];
    }
    TransformLevel(even, half, level + 1);
    TransformLevel(odd, half, level + 1);
    for (int k = 0; k < half; ++k) {
        const double angle = k * -kFullTurn / n;
        const double cosine = std::cos(angle);
        const double sine = std::sin(angle);
        // Written out, as operator* would look for infinities on each product.
        const std::complex<double> turned(odd[k].real() * cosine - odd[k].imag() * sine,
                                          odd[k].real() * sine + odd[k].imag() * cosine);
        data[k] = even[k] + turned;
        data[k + half] = even[k] - turned;
    }
}

}  // namespace pixelgrove
