#include "app/FrameClock.h"

#include <QStringList>
#include <numeric>

namespace pixelgrove {

namespace {

// With these no product below leaves 64 bits, for 20 million frames of sound at 768 kHz.
constexpr int64_t kMaxFrames = 10'000'000;
constexpr int64_t kMaxSeconds = 10'000;

std::optional<int64_t> ParseDigits(const QString& text) {
    for (const QChar c : text)
        if (c < u'0' || c > u'9') return std::nullopt;
    bool good = false;
    const int64_t value = text.toLongLong(&good);
    return good ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<FrameRate> ParseFrameRate(const QString& text) {
    const bool isRatio = text.contains(u'/');
    const QStringList parts = text.split(isRatio ? u'/' : u'.');
    if (parts.size() > 2) return std::nullopt;
    std::optional<int64_t> frames = ParseDigits(isRatio ? parts[0] : parts.join(QString()));
    std::optional<int64_t> seconds = 1;
    if (isRatio) {
        seconds = ParseDigits(parts[1]);
    } else if (parts.size() == 2) {
        if (parts[0].isEmpty() || parts[1].isEmpty() || parts[1].size() > 9) return std::nullopt;
        for (qsizetype i = 0; i < parts[1].size(); ++i)
            *seconds *= 10;
    }
    if (!frames || !seconds || *frames < 1 || *seconds < 1) return std::nullopt;
    const int64_t divisor = std::gcd(*frames, *seconds);
    const FrameRate rate{*frames / divisor, *seconds / divisor};
    const bool isInRange = rate.PerSecond() >= 0.01 && rate.PerSecond() <= 10000.0;
    if (!isInRange || rate.frames > kMaxFrames || rate.seconds > kMaxSeconds) return std::nullopt;
    return rate;
}

int64_t UnitsAfter(const FrameRate& rate, int64_t frames, int64_t unitsPerSecond) {
    return frames * rate.seconds * unitsPerSecond / rate.frames;
}

std::optional<QDateTime> ParseDate(const QString& text) {
    const QDate day = QDate::fromString(text.left(10), Qt::ISODate);
    const QString rest = text.mid(10);
    if (!day.isValid()) return std::nullopt;
    if (rest.isEmpty()) return QDateTime(day, QTime(0, 0), Qt::UTC);
    const QTime time = QTime::fromString(rest.mid(1), Qt::ISODateWithMs);
    if ((rest[0] != u'T' && rest[0] != u' ') || !time.isValid()) return std::nullopt;
    return QDateTime(day, time, Qt::UTC);
}

std::array<float, 4> DateOfFrame(const QDateTime& first, const FrameRate& rate, int64_t frame) {
    const QDateTime now = first.addMSecs(UnitsAfter(rate, frame - 1, 1000));
    const QDate day = now.date();
    // Whole seconds, as iDate has them by the clock too.
    return {float(day.year()), float(day.month()), float(day.day()),
            float(now.time().msecsSinceStartOfDay() / 1000)};
}

}  // namespace pixelgrove
