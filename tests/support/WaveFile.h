// Sound files for tests: float samples of interleaved channels as a WAV file.
#pragma once

#include <QByteArray>
#include <QtEndian>
#include <cmath>
#include <numbers>
#include <vector>

namespace pixelgrove::test {

inline QByteArray WaveFile(const std::vector<float>& samples, int rate, int channels = 1) {
    const auto append = [](QByteArray& bytes, auto value) {
        value = qToLittleEndian(value);
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const auto dataBytes = quint32(samples.size() * sizeof(float));
    QByteArray file("RIFF");
    append(file, quint32(36 + dataBytes));
    file.append("WAVEfmt ");
    append(file, quint32(16));
    append(file, quint16(3));  // float
    append(file, quint16(channels));
    append(file, quint32(rate));
    append(file, quint32(rate * channels * 4));
    append(file, quint16(channels * 4));
    append(file, quint16(32));
    file.append("data");
    append(file, dataBytes);
    for (const float sample : samples)
        append(file, sample);
    return file;
}

inline std::vector<float> Tone(double hertz, int rate, int count) {
    std::vector<float> samples;
    for (int i = 0; i < count; ++i)
        samples.push_back(float(0.5 * std::sin(2.0 * std::numbers::pi * hertz * i / rate)));
    return samples;
}

}  // namespace pixelgrove::test
