// ComplexFft: a Fourier transform of up to 1024 complex values.
//
// Plain: a recursive radix 2, decimated in time, whose factors are computed as they are needed. Its scratch
// is allocated with the object, so a transform allocates nothing. One thread at a time.
#pragma once

#include <array>
#include <complex>
#include <vector>

namespace pixelgrove {

class ComplexFft {
  public:
    static constexpr int kMaxSize = 1024;

    ComplexFft();

    // In place and not scaled: data[k] becomes the sum of data[i] * e^(-2 pi j i k / n). n is a power of 2,
    // at most kMaxSize.
    void Transform(std::complex<double>* data, int n) { TransformLevel(data, n, 0); }

  private:
    // Scratch of one depth of the recursion, and each depth needs half of what the one above has.
    struct Level {
        std::vector<std::complex<double>> even;
        std::vector<std::complex<double>> odd;
    };

    void TransformLevel(std::complex<double>* data, int n, size_t level);

    std::array<Level, 10> levels_;
};

}  // namespace pixelgrove
