#include "soundfile/SoundFile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <span>

#include "support/WaveFile.h"

namespace pixelgrove {
namespace {

class SoundFiles : public ::testing::Test {
  protected:
    std::unique_ptr<SoundFile> Open(const QByteArray& bytes) {
        QFile file(folder_.filePath(QStringLiteral("a.wav")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        return SoundFile::Open(file.fileName(), &reason_);
    }
    QTemporaryDir folder_;
    QString reason_;
};

TEST_F(SoundFiles, RowsAreThoseOfTheSamplesSoFar) {
    const int rate = 44100;
    std::vector<float> stereo;
    for (const float sample : test::Tone(1000.0, rate, 3 * 1024 + 100)) {
        stereo.push_back(sample);
        stereo.push_back(0.25f * sample);
    }
    // Behind the end the same analysis goes on with silence.
    std::vector<float> endless = stereo;
    endless.resize(2 * 6 * 1024);
    const AudioParameters parameters;
    SpectrumAnalysis analysis(parameters);
    std::vector<AudioBlock> blocks(1);
    SoundFrames frames(
        [&](SampleBlock& block) { blocks.push_back(analysis.Analyze(block, BinsFor20k(rate))); });
    frames.Take({SoundFormat::Sample::Float32, 2, double(rate)}, std::as_bytes(std::span(endless)));

    for (const int step : {735, 1, 5000}) {
        const auto sound = Open(test::WaveFile(stereo, rate, 2));
        ASSERT_TRUE(sound) << reason_.toStdString();
        EXPECT_EQ(sound->Rate(), rate);
        for (int64_t heard = 0; heard <= 6 * 1024; heard += step) {
            ASSERT_TRUE(sound->HearUpTo(heard, &reason_));
            ASSERT_EQ(sound->Rows(), blocks[size_t(heard) / 1024]) << step << " " << heard;
        }
    }
}

TEST_F(SoundFiles, WhatIsNoSoundIsRefused) {
    const QByteArray good = test::WaveFile(test::Tone(1000.0, 48000, 100), 48000);
    QByteArray noRate = good;
    noRate.replace(24, 4, QByteArray(4, '\0'));
    QByteArray fast = good;
    fast.replace(24, 4, QByteArray("\x00\x00\x00\x40", 4));
    for (const QByteArray& bytes : {QByteArray(), QByteArray("music"), good.left(30), noRate, fast,
                                    QByteArray("RIFF") + QByteArray(10000, '\xff')}) {
        reason_.clear();
        EXPECT_FALSE(Open(bytes)) << bytes.left(50).toHex().constData();
        EXPECT_FALSE(reason_.isEmpty() || reason_.endsWith(u'.')) << reason_.toStdString();
    }
    EXPECT_FALSE(SoundFile::Open(folder_.path(), &reason_));
    EXPECT_FALSE(SoundFile::Open(folder_.filePath(QStringLiteral("none")), &reason_));
    EXPECT_TRUE(Open(good.left(good.size() - 51))) << "one that was cut has what is left";
}

}  // namespace
}  // namespace pixelgrove
