// FrameClock: a film's own time, which a frame's number alone decides. Pure.
#pragma once

#include <QDateTime>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>

namespace pixelgrove {

// So many frames in so many seconds, without common divisor.
struct FrameRate {
    int64_t frames = 60;
    int64_t seconds = 1;

    double PerSecond() const { return double(frames) / double(seconds); }
    bool operator==(const FrameRate&) const = default;
};

// "25", "59.94" or "30000/1001": from 0.01 to 10000 frames a second. Nothing for anything else.
std::optional<FrameRate> ParseFrameRate(const QString& text);

// What of unitsPerSecond has passed after so many frames, rounded down.
int64_t UnitsAfter(const FrameRate& rate, int64_t frames, int64_t unitsPerSecond);

// "2026-11-23T12:00:00", the seconds with or without a fraction, or a day alone for its midnight; no zone.
// What comes back has none either, so that every day has 24 hours. Nothing for anything else.
std::optional<QDateTime> ParseDate(const QString& text);

// iDate of a frame, where that of frame 1 is first.
std::array<float, 4> DateOfFrame(const QDateTime& first, const FrameRate& rate, int64_t frame);

}  // namespace pixelgrove
