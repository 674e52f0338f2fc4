#include "audio/SpectrumAnalysis.h"

#include <algorithm>
#include <cmath>

namespace pixelgrove {

namespace {

constexpr double kWindowStep = 0.00614192112138767;  // a full turn over the 1023 steps of a block
constexpr double kColumnStep = 0.001953125;          // 1 / 512

// 0 / 0, as in silence from the start, is no level at all.
uint8_t SpectrumByte(double level) {
    return level > 0.0 ? uint8_t(std::min(level, 1.0) * 255.0) : 0;
}

// What isn't below 255, so 0 / 0 as well, is 255. Nothing bounds it below 0, where it wraps around as a
// 32-bit number does, and what isn't even one of those is 0: the taper of a first block of equal samples.
uint8_t WaveByte(double value) {
    if (!(value < 255.0)) return 255;
    return value > double(std::numeric_limits<int32_t>::min()) ? uint8_t(int32_t(value)) : 0;
}

}  // namespace

int BinsFor20k(double sampleRate) {
    const double bins = std::round(20000.0 / (sampleRate * 0.0009765625));
    return bins < 1.0 ? kAudioColumns : int(std::min(bins, 1e9));
}

SpectrumAnalysis::SpectrumAnalysis(const AudioParameters& parameters)
    : parameters_(parameters), transform_(kBlockSamples) {
    for (size_t i = 0; i < window_.size(); ++i)
        window_[i] = (1.0 - std::cos(double(i) * kWindowStep)) * 0.5;
    peaks_.fill(-kHighest);
}

AudioBlock SpectrumAnalysis::Analyze(SampleBlock& samples, int binsFor20k) {
    // Once for the whole block, so that both rows are of the same mind.
    const bool maximize = parameters_.maximizeRange;
    const int noiseLevel = parameters_.noiseLevel;
    const auto wave = std::span(samples).first<kAudioColumns>();
    TransformWindowed(samples);
    MeasureColumns(binsFor20k, maximize);
    FilterNoise(spectrum_, noiseLevel);
    const auto [lowest, highest] = std::minmax_element(wave.begin(), wave.end());
    waveMin_ = std::min(waveMin_, *lowest);
    waveMax_ = std::max(waveMax_, *highest);
    spectrumMax_ = std::max(spectrumMax_, *std::max_element(spectrum_.begin(), spectrum_.end()));
    FilterNoise(wave, noiseLevel);
    AudioBlock rows;
    WriteRows(wave, maximize, rows);
    ForgetPeaks();
    return rows;
}

void SpectrumAnalysis::TransformWindowed(const SampleBlock& samples) {
    for (size_t i = 0; i < samples.size(); ++i)
        transform_[i] = window_[i] * samples[i];
    fft_.Transform(transform_.data(), kBlockSamples);
}

void SpectrumAnalysis::MeasureColumns(int binsFor20k, bool maximize) {
    const double weight = parameters_.smoothingWeight;
    for (size_t i = 0; i < spectrum_.size(); ++i) {
        // At rates so low that 20 kHz lies behind the transform there is nothing to hear.
        const auto bin = size_t(double(i) * (binsFor20k * kColumnStep));
        double power = 0.0;
        if (bin < transform_.size()) {
            const std::complex<double> value = transform_[bin];
            power = value.real() * value.real() + value.imag() * value.imag();
        }
        if (!maximize) power = std::log10(power + 1.0) * 100.0 * (double(i) * kColumnStep);
        spectrum_[i] = (weight * spectrum_[i] + power) / (weight + 1.0);
        peaks_[i] = std::max(peaks_[i], spectrum_[i]);
    }
}

void SpectrumAnalysis::FilterNoise(std::span<double, kAudioColumns> values, int level) {
    if (level < 1) return;
    // Wider than the row there is no block, and each value becomes the first that was left.
    const size_t width = size_t(1) << std::min(level, 10);
    const size_t blocks = values.size() / width;
    for (size_t block = 0; block < blocks; ++block) {
        double sum = 0.0;
        for (const double value : values.subspan(block * width, width))
            sum += value;
        filterScratch_[block] = sum / double(width);
    }
    for (size_t i = 0; i < values.size(); ++i) {
        const double place = double(i) * (double(blocks) * kColumnStep);
        const auto block = size_t(place);
        const double part = place - double(block);
        values[i] = (1.0 - part) * filterScratch_[block] + part * filterScratch_[block + 1];
    }
}

void SpectrumAnalysis::WriteRows(std::span<const double, kAudioColumns> wave, bool maximize,
                                 AudioBlock& rows) const {
    const double range = waveMax_ - waveMin_;
    for (size_t i = 0; i < spectrum_.size(); ++i) {
        rows[i] = SpectrumByte(spectrum_[i] / (maximize ? peaks_[i] : spectrumMax_));
        rows[kAudioColumns + i] = WaveByte((wave[i] - waveMin_) / range * 255.0);
    }
}

void SpectrumAnalysis::ForgetPeaks() {
    const double kept = parameters_.homingFactor;
    for (double& peak : peaks_)
        peak *= kept;
    const double step = (waveMax_ - waveMin_) * (1.0 - kept);
    waveMin_ += step;
    waveMax_ -= step;
    spectrumMax_ *= kept;
}

}  // namespace pixelgrove
