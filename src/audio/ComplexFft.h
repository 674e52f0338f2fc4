// ComplexFft: a Fourier transform of up to 1024 complex values.
//
// Plain: a recursive radix 2, decimated in time. Its scratch and its factors are made with the object, so a
// transform allocates nothing and takes no sine. One thread at a time.
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
    void Transform(std::complex<double>* data, int n);

  private:
    // What one depth of the recursion needs; the first one has kMaxSize values, each next one half as many.
    struct Level {
        std::vector<std::complex<double>> even;
        std::vector<std::complex<double>> odd;
        std::vector<std::complex<double>> factors;  // e^(-2 pi j k / n)
    };

    void TransformLevel(std::complex<double>* data, int n, size_t level);

    std::array<Level, 10> levels_;
};

}  // namespace pixelgrove
