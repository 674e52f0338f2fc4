#include "audio/ComplexFft.h"

#include <bit>
#include <cmath>

namespace pixelgrove {

namespace {

constexpr double kFullTurn = 6.283185307179586;

}  // namespace

ComplexFft::ComplexFft() {
    int n = kMaxSize;
    for (Level& level : levels_) {
        const auto half = size_t(n) / 2;
        level.even.resize(half);
        level.odd.resize(half);
        for (size_t k = 0; k < half; ++k) {
            const double angle = double(k) * -kFullTurn / n;
            level.factors.emplace_back(std::cos(angle), std::sin(angle));
        }
        n /= 2;
    }
}

void ComplexFft::Transform(std::complex<double>* data, int n) {
    if (n > 1) TransformLevel(data, n, size_t(std::countr_zero(unsigned(kMaxSize / n))));
}

void ComplexFft::TransformLevel(std::complex<double>* data, int n, size_t level) {
    if (n == 2) {
        const std::complex<double> first = data[0];
        data[0] = first + data[1];
        data[1] = first - data[1];
        return;
    }
    const int half = n / 2;
    std::complex<double>* even = levels_[level].even.data();
    std::complex<double>* odd = levels_[level].odd.data();
    const std::complex<double>* factors = levels_[level].factors.data();
    for (int i = 0; i < half; ++i) {
        even[i] = data[2 * i];
        odd[i] = data[2 * i + 1];
    }
    TransformLevel(even, half, level + 1);
    TransformLevel(odd, half, level + 1);
    for (int k = 0; k < half; ++k) {
        const double cosine = factors[k].real();
        const double sine = factors[k].imag();
        // Written out, as operator* would look for infinities on each product.
        const std::complex<double> turned(odd[k].real() * cosine - odd[k].imag() * sine,
                                          odd[k].real() * sine + odd[k].imag() * cosine);
        data[k] = even[k] + turned;
        data[k + half] = even[k] - turned;
    }
}

}  // namespace pixelgrove
