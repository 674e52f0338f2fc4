// The analysis against one worked out anew here, with a transform by its definition; frames into blocks.
#include "audio/SpectrumAnalysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "audio/SoundFrames.h"

namespace pixelgrove {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

struct Setting {
    int smoothing;
    int noise;
    double homing;
    bool maximize;
    int bins;
};

void Apply(const Setting& setting, AudioParameters& parameters) {
    parameters.smoothingWeight = setting.smoothing;
    parameters.noiseLevel = setting.noise;
    parameters.homingFactor = setting.homing;
    parameters.maximizeRange = setting.maximize;
}

// Two tones and some noise, the same in each run; louder with each third block.
SampleBlock Sound(int number) {
    SampleBlock block;
    for (int i = 0; i < kBlockSamples; ++i) {
        const double time = (number * kBlockSamples + i) / 48000.0;
        const double noise = std::fmod(std::sin(i * 12.9898 + number) * 43758.5453, 1.0);
        block[size_t(i)] = (1 + number % 3) * (4000 * std::sin(kTurn * 1000 * time) +
                                               900 * std::sin(kTurn * 15000 * time) + 50 * noise);
    }
    return block;
}

class Expected {
  public:
    // The rows as real numbers from 0 to 255, before they become bytes.
    std::vector<double> Rows(const SampleBlock& samples, const Setting& set) {
        for (int i = 0; i < 512; ++i) {
            double power = PowerOf(samples, i * set.bins / 512);
            if (!set.maximize) power = 100 * std::log10(1 + power) * i / 512;
            spectrum_[i] = (set.smoothing * spectrum_[i] + power) / (set.smoothing + 1);
            peaks_[i] = std::max(peaks_[i], spectrum_[i]);
        }
        Filter(spectrum_, set.noise);
        std::vector<double> wave(samples.begin(), samples.begin() + 512);
        low_ = std::min(low_, *std::min_element(wave.begin(), wave.end()));
        high_ = std::max(high_, *std::max_element(wave.begin(), wave.end()));
        top_ = std::max(top_, *std::max_element(spectrum_.begin(), spectrum_.end()));
        Filter(wave, set.noise);
        std::vector<double> rows(1024);
        for (int i = 0; i < 512; ++i) {
            rows[i] = 255 * std::clamp(spectrum_[i] / (set.maximize ? peaks_[i] : top_), 0.0, 1.0);
            rows[512 + i] = 255 * (wave[i] - low_) / (high_ - low_);
            peaks_[i] *= set.homing;
        }
        const double inwards = (high_ - low_) * (1 - set.homing);
        low_ += inwards;
        high_ -= inwards;
        top_ *= set.homing;
        return rows;
    }

  private:
    static double PowerOf(const SampleBlock& samples, int bin) {
        if (bin > 1023) return 0;
        double re = 0, im = 0;
        for (int i = 0; i < 1024; ++i) {
            static const std::vector<double> sines = [] {
                std::vector<double> table;
                for (int k = 0; k < 1024; ++k)
                    table.push_back(std::sin(kTurn * k / 1024));
                return table;
            }();
            const double windowed = samples[i] * std::pow(std::sin(kTurn / 2 * i / 1023), 2);
            re += windowed * sines[(i * bin + 256) % 1024];
            im -= windowed * sines[i * bin % 1024];
        }
        return re * re + im * im;
    }
    void Filter(std::vector<double>& values, int level) {
        if (level == 0) return;
        const int blocks = level > 9 ? 0 : 512 >> level;
        for (int b = 0; b < blocks; ++b) {
            means_[b] = 0;
            for (int i = 0; i < 512 / blocks; ++i)
                means_[b] += values[b * 512 / blocks + i] * blocks / 512;
        }
        for (int i = 0; i < 512; ++i) {
            const int b = i * blocks / 512;
            values[i] = means_[b] + (means_[b + 1] - means_[b]) * (i * blocks % 512) / 512;
        }
    }

    std::vector<double> spectrum_ = std::vector<double>(512), means_ = spectrum_;
    std::vector<double> peaks_ = std::vector<double>(512, -1e308);
    double top_ = -1e308, low_ = 1e308, high_ = -1e308;
};

TEST(SpectrumAnalysis, RowsAreWhatTheirDefinitionGives) {
    // Some with values of before: the means of one level are still there at the next.
    const std::vector<std::vector<Setting>> runs{
        {{0, 0, 0.999, false, 427}, {0, 0, 0.999, true, 427}, {8, 1, 0.999, false, 427}},
        {{0, 0, 0.9, true, 464}, {128, 0, 0.9, true, 464}, {8, 0, 0.9, true, 464}},
        {{8, 1, 0.999, false, 213}, {8, 2, 0.979, false, 213}, {8, 3, 0.979, true, 213}},
        {{1, 4, 1.0, false, 512}, {1, 5, 1.0, true, 512}, {1, 6, 1.0, false, 512}},
        {{0, 6, 0.0, true, 427}, {3, 2, 0.0, false, 427}, {3, 5, 0.5, false, 427}},
        {{8, 3, 0.999, false, 427}, {8, 100, 0.999, false, 427}, {8, 9, 0.999, true, 427}},
        {{8, 0, 0.999, false, 2560}, {0, 10, 0.999, true, 2560}},  // a rate of 8000: bins end before 20 kHz
    };
    for (size_t run = 0; run < runs.size(); ++run) {
        AudioParameters parameters;
        SpectrumAnalysis analysis(parameters);
        Expected expected;
        for (int number = 0; number < 7; ++number) {
            const Setting& setting = runs[run][size_t(number) % runs[run].size()];
            Apply(setting, parameters);
            SampleBlock samples = Sound(number);
            const std::vector<double> rows = expected.Rows(samples, setting);
            const AudioBlock bytes = analysis.Analyze(samples, setting.bins);
            for (size_t i = 0; i < bytes.size(); ++i) {
                // Truncated, and nothing bounds the wave below, where it wraps around.
                const double value = std::min(rows[i], 255.0);
                const bool isByte = bytes[i] == uint8_t(int(value - 1e-6)) ||
                                    bytes[i] == uint8_t(int(value + (value < 255 ? 1e-6 : 0)));
                ASSERT_TRUE(isByte) << "run " << run << ", block " << number << ", " << i << ": " << value
                                    << " became " << int(bytes[i]);
            }
        }
    }
}

TEST(SpectrumAnalysis, AFirstBlockOfEqualSamplesHasAFullWave) {
    for (const double level : {0.0, 1000.0}) {
        AudioParameters parameters;
        parameters.noiseLevel = 0;
        SpectrumAnalysis analysis(parameters);
        SampleBlock samples;
        samples.fill(level);
        const AudioBlock rows = analysis.Analyze(samples, 427);
        EXPECT_EQ(std::count(rows.begin() + 512, rows.end(), 255), 512) << level;
        EXPECT_EQ(rows[0], 0) << level;
        EXPECT_EQ(*std::max_element(rows.begin(), rows.begin() + 512) > 0, level > 0.0);
    }
}

TEST(SpectrumAnalysis, ARateHasItsBinsUpTo20kHz) {
    for (const auto& [rate, bins] : std::initializer_list<std::pair<double, int>>{
             {48000, 427}, {44100, 464}, {96000, 213}, {192000, 107}, {8000, 2560}, {50e6, 512}})
        EXPECT_EQ(BinsFor20k(rate), bins) << rate;
}

template <typename Sample>
std::vector<std::byte> Bytes(const std::vector<Sample>& samples) {
    const auto* first = reinterpret_cast<const std::byte*>(samples.data());
    return {first, first + samples.size() * sizeof(Sample)};
}

TEST(SoundFrames, EachFormBecomesOneChannel) {
    using enum SoundFormat::Sample;
    const float none = std::nanf("");
    const struct {
        const char* what;
        SoundFormat format;
        std::vector<std::byte> frames;
        std::vector<double> values;
    } cases[] = {
        {"mono", {Int16, 1}, Bytes<int16_t>({-32768, 7}), {-32768, 7}},
        {"stereo", {Int16, 2}, Bytes<int16_t>({32767, 32767, -3, 2}), {32767, -0.5}},
        {"5.1", {Int16, 6}, Bytes<int16_t>({5, 1, 1, 1, 1, 1, -9, 1, 1, 1, 1, 1}), {5, -9}},
        {"float stereo", {Float32, 2}, Bytes<float>({0.5f, 0.25f, -1.0f, 1.0f}), {0.375, 0}},
        {"float quad", {Float32, 4}, Bytes<float>({0.5f, 1, 1, 1}), {0.5}},
        {"not finite", {Float32, 1}, Bytes<float>({none, HUGE_VALF, 2.0f}), {0, 0, 2}},
        {"cut short", {Int16, 2}, Bytes<int16_t>({2, 4, 6}), {3}},
        {"no channel", {Int16, 0}, Bytes<int16_t>({2, 4}), {}},
    };
    for (const auto& [what, format, frames, values] : cases) {
        std::vector<double> heard;
        SoundFrames sound([&](SampleBlock& block) { heard.assign(block.begin(), block.end()); });
        sound.Take(format, frames);
        // Shows what was put into the block so far.
        const std::vector<float> rest(kBlockSamples - values.size());
        EXPECT_TRUE(heard.empty()) << what;
        sound.Take({Float32, 1}, Bytes(rest));
        ASSERT_EQ(heard.size(), size_t(kBlockSamples)) << what;
        heard.resize(values.size());
        EXPECT_EQ(heard, values) << what;
    }
}

TEST(SoundFrames, BlocksFollowEachOtherWhateverThePackets) {
    std::vector<double> heard;
    SoundFrames sound([&](SampleBlock& block) {
        heard.insert(heard.end(), block.begin(), block.end());
        block.fill(-1);  // it may be overwritten
    });
    std::vector<int16_t> samples(3000);
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = int16_t(i);
    const std::vector<std::byte> bytes = Bytes(samples);
    const std::span<const std::byte> all(bytes);
    const SoundFormat mono{SoundFormat::Sample::Int16, 1};
    sound.Take(mono, all.first(2 * 1023));
    EXPECT_EQ(heard.size(), 0u);
    sound.Take(mono, all.subspan(2 * 1023, 2));
    EXPECT_EQ(heard.size(), 1024u);
    sound.Take(mono, all.subspan(2 * 1024));
    ASSERT_EQ(heard.size(), 2048u);
    EXPECT_TRUE(std::equal(heard.begin(), heard.end(), samples.begin()));
}

}  // namespace
}  // namespace pixelgrove
