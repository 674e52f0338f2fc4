// SpectrumAnalysis: makes each block of sound into the two rows of bytes that shaders read.
//
// There is no gain to set: both rows are measured against ranges that follow the sound at once upwards and
// slowly forget. Whatever the samples' scale is, the picture is the same. Owned and used by the one thread
// that takes the sound; the parameters may change at any time and count from the next block on.
#pragma once

#include <array>
#include <complex>
#include <limits>
#include <span>
#include <vector>

#include "audio/AudioParameters.h"
#include "audio/ComplexFft.h"
#include "media/LiveFeeds.h"

namespace pixelgrove {

constexpr int kBlockSamples = 1024;

using SampleBlock = std::array<double, kBlockSamples>;

// How many bins of a block's transform reach up to 20 kHz, rounded; 512 where it isn't even one. sampleRate
// is in Hz, above 0.
int BinsFor20k(double sampleRate);

class SpectrumAnalysis {
  public:
    // parameters must live as long as the object. All memory is taken here; a block takes none.
    explicit SpectrumAnalysis(const AudioParameters& parameters);

    // Takes the next block, finite samples in the order of time, and leaves the first half of it filtered.
    // Gives the rows after this block.
    AudioBlock Analyze(SampleBlock& samples, int binsFor20k);

  private:
    using Columns = std::array<double, kAudioColumns>;

    static constexpr double kHighest = std::numeric_limits<double>::max();

    void TransformWindowed(const SampleBlock& samples);
    void MeasureColumns(int binsFor20k, bool maximize);
    // Smooths 512 values by linear steps between the means of blocks of 2^level; nothing below level 1.
    void FilterNoise(std::span<double, kAudioColumns> values, int level);
    void WriteRows(std::span<const double, kAudioColumns> wave, bool maximize, AudioBlock& rows) const;
    void ForgetPeaks();

    const AudioParameters& parameters_;
    ComplexFft fft_;
    SampleBlock window_;
    std::vector<std::complex<double>> transform_;
    Columns spectrum_{};
    Columns peaks_;  // of each column, before the noise filter
    // What a use at a lower level left behind the means is read as well: the taper at the upper end.
    Columns filterScratch_{};
    double spectrumMax_ = -kHighest;  // of all columns, after the noise filter
    double waveMin_ = kHighest;
    double waveMax_ = -kHighest;
};

}  // namespace pixelgrove
