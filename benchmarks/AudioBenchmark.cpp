// What the analysis of a block of sound costs, beside a bare loop over its transform's arithmetic, and FFTW's
// transform where the machine has it.
#include <benchmark/benchmark.h>

#ifdef PIXELGROVE_HAS_FFTW
#include <fftw3.h>
#endif

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "audio/SpectrumAnalysis.h"

namespace pixelgrove {
namespace {

SampleBlock Tones() {
    SampleBlock block;
    for (size_t i = 0; i < block.size(); ++i)
        block[i] = 8000.0 * std::sin(0.13 * double(i)) + 2000.0 * std::sin(1.9 * double(i));
    return block;
}

void BlockOfSound(benchmark::State& state) {
    AudioParameters parameters;
    parameters.maximizeRange = state.range(0) != 0;
    SpectrumAnalysis analysis(parameters);
    const SampleBlock sound = Tones();
    for (auto _ : state) {
        SampleBlock samples = sound;
        benchmark::DoNotOptimize(analysis.Analyze(samples, 427));
    }
}
BENCHMARK(BlockOfSound)->ArgName("maximize")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void TransformAlone(benchmark::State& state) {
    ComplexFft fft;
    const SampleBlock sound = Tones();
    for (auto _ : state) {
        std::vector<std::complex<double>> values(sound.begin(), sound.end());
        fft.Transform(values.data(), kBlockSamples);
        benchmark::DoNotOptimize(values.data());
    }
}
BENCHMARK(TransformAlone)->Unit(benchmark::kMicrosecond);

// As many steps as the transform has, in place, with the factors from a table.
void BareLoop(benchmark::State& state) {
    std::vector<std::complex<double>> factors;
    for (int i = 0; i < kBlockSamples / 2; ++i)
        factors.push_back(std::polar(1.0, -2.0 * std::numbers::pi * i / kBlockSamples));
    const SampleBlock sound = Tones();
    for (auto _ : state) {
        std::vector<std::complex<double>> values(sound.begin(), sound.end());
        for (size_t half = 1; half < values.size(); half *= 2) {
            const size_t stride = values.size() / (2 * half);
            for (size_t start = 0; start < values.size(); start += 2 * half)
                for (size_t k = start; k < start + half; ++k) {
                    const std::complex<double> odd = values[k + half], factor = factors[(k - start) * stride];
                    const std::complex<double> turned(
                        odd.real() * factor.real() - odd.imag() * factor.imag(),
                        odd.real() * factor.imag() + odd.imag() * factor.real());
                    values[k + half] = values[k] - turned;
                    values[k] += turned;
                }
        }
        benchmark::DoNotOptimize(values.data());
    }
}
BENCHMARK(BareLoop)->Unit(benchmark::kMicrosecond);

#ifdef PIXELGROVE_HAS_FFTW
void Fftw(benchmark::State& state) {
    const SampleBlock sound = Tones();
    std::vector<std::complex<double>> values(kBlockSamples);
    auto* data = reinterpret_cast<fftw_complex*>(values.data());
    const fftw_plan plan = fftw_plan_dft_1d(kBlockSamples, data, data, FFTW_FORWARD, FFTW_MEASURE);
    for (auto _ : state) {
        std::copy(sound.begin(), sound.end(), values.begin());
        fftw_execute(plan);
        benchmark::DoNotOptimize(values.data());
    }
    fftw_destroy_plan(plan);
}
BENCHMARK(Fftw)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace
}  // namespace pixelgrove
