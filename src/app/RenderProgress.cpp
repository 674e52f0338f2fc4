#include "app/RenderProgress.h"

#include <unistd.h>

#include <QByteArray>
#include <cstdio>

#include "platform/Clock.h"

namespace pixelgrove {

namespace {

constexpr int64_t kShowEveryNs = 100'000'000;

QString TimeText(int64_t seconds) {
    const QString rest = QStringLiteral(":%1").arg(seconds % 60, 2, 10, QLatin1Char('0'));
    if (seconds < 3600) return QString::number(seconds / 60) + rest;
    return QStringLiteral("%1:%2").arg(seconds / 3600).arg(seconds / 60 % 60, 2, 10, QLatin1Char('0')) + rest;
}

}  // namespace

QString ProgressLine(int frame, int last, int drawn, double seconds) {
    QString line = QStringLiteral("frame %1 of %2").arg(frame).arg(last);
    if (seconds <= 0.0 || drawn < 1) return line;
    const double perSecond = drawn / seconds;
    line += QStringLiteral(", %1 a second").arg(perSecond, 0, 'f', perSecond < 10.0 ? 2 : 1);
    return line + QStringLiteral(", %1 left").arg(TimeText(int64_t((last - frame) / perSecond + 0.5)));
}

RenderProgress::RenderProgress(int last)
    : last_(last), isOn_(isatty(STDERR_FILENO) != 0), startNs_(isOn_ ? CounterNs() : 0) {}

void RenderProgress::Show(int frame) {
    if (!isOn_) return;
    ++drawn_;
    const int64_t now = CounterNs();
    if (frame != last_ && now - shownNs_ < kShowEveryNs) return;
    shownNs_ = now;
    // Back to the start of the line, and nothing left of a longer one.
    const QByteArray line =
        '\r' + ProgressLine(frame, last_, drawn_, double(now - startNs_) / 1e9).toLatin1() + "\x1b[K";
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    isLineOpen_ = true;
}

void RenderProgress::End() {
    if (!isLineOpen_) return;
    std::fputc('\n', stderr);
    isLineOpen_ = false;
}

}  // namespace pixelgrove
