#include "controls/widgets/WavePreview.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/LiveValues.h"
#include "controls/SliderTrack.h"
#include "look/widgets/Theme.h"
#include "platform/Random.h"

namespace pixelgrove {

namespace {

constexpr uint32_t kGround = 0x461914;
constexpr uint32_t kAboveWave = 0xd24b3c;
constexpr int kTickMs = 40;
constexpr int kNoiseTicks = 4;  // until noise is drawn anew
constexpr double kMarkRadius = 3;

// Pixels from the top of what is that high; 0 for what is no number.
int FromTop(double level, int height) {
    const double y = (1.0 - level) * height;
    return std::isnan(y) ? 0 : int(std::clamp(y, 0.0, double(height)));
}

bool IsWave(int kind) {
    return kind >= kModulationSine && kind <= kModulationTriangle;
}

// Where in the picture, 0 to 1, the wave is as far as at that time; above 1 where the picture ends before it.
double PictureTime(double frequency, double waveTime) {
    const double rate = std::abs(frequency);
    // The picture repeats itself after as many whole periods as it holds, and after one if it holds less.
    return std::fmod(waveTime, std::max(1.0, std::floor(rate)) / rate);
}

}  // namespace

WavePreview::WavePreview(QWidget* parent) : QWidget(parent), dice_(SystemRandom32()) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void WavePreview::showEvent(QShowEvent*) {
    timer_.start(kTickMs, this);
}

void WavePreview::hideEvent(QHideEvent*) {
    timer_.stop();
}

void WavePreview::timerEvent(QTimerEvent* event) {
    if (event->timerId() != timer_.timerId()) return QWidget::timerEvent(event);
    const double now = WaveTime();
    if (now == waveTime_) return;
    waveTime_ = now;
    if (IsWave(state_.modulationKind)) update();
    if (state_.modulationKind == kModulationNoise && ++ticks_ % kNoiseTicks == 0) Draw(state_, false);
}

void WavePreview::Draw(RangeControlState& state, bool drawRandom) {
    const QSize pixels = size() * devicePixelRatio();
    const int width = pixels.width();
    const int height = pixels.height();
    update();
    image_ = QImage(pixels, QImage::Format_RGB32);
    if (image_.isNull()) return;
    image_.setDevicePixelRatio(devicePixelRatio());
    image_.fill(FromBgr(kGround));

    const double low = TrackFraction(state, state.low);
    const double high = TrackFraction(state, state.high);
    int top = FromTop(high, height);
    int bottom = FromTop(low, height);
    uint32_t topColour = Theme().rows[UiColour::MeterHigh];
    uint32_t bottomColour = Theme().rows[UiColour::MeterLow];
    if (bottom < top) {
        std::swap(top, bottom);
        std::swap(topColour, bottomColour);
    }
    QPainter painter(&image_);
    painter.scale(1 / devicePixelRatio(), 1 / devicePixelRatio());
    for (int y = top; y < bottom; ++y)
        painter.fillRect(0, y, width, 1,
                         FromBgr(MixedColour(topColour, bottomColour, y - top, bottom - top)));
    for (int x = 0; x < width; ++x) {
        const float level = EvaluateModulation(state, x, width, low, high, drawRandom && x == 0, dice_);
        if (std::isnan(level)) continue;
        painter.fillRect(x, top, 1, FromTop(level, height) - top, FromBgr(kAboveWave));
    }
    state_ = state;
}

void WavePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(rect(), image_);
    if (waveTime_ >= 0 && IsWave(state_.modulationKind)) DrawMark(painter);
    // Sunken into the window.
    painter.setPen(Theme().line);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void WavePreview::DrawMark(QPainter& painter) {
    const double at = PictureTime(double(state_.frequency), waveTime_);
    if (!(at <= 1)) return;
    const double level = double(EvaluateModulation(state_, at, 1, TrackFraction(state_, state_.low),
                                                   TrackFraction(state_, state_.high), false, dice_));
    if (std::isnan(level)) return;
    const double top =
        std::clamp((1 - level) * height(), kMarkRadius, std::max(kMarkRadius, height() - kMarkRadius));
    const QPointF place(at * width(), top);
    QColor line = Theme().text;
    line.setAlphaF(0.5f);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line);
    painter.drawLine(QPointF(place.x(), 0), QPointF(place.x(), height()));
    painter.setPen(Theme().window);
    painter.setBrush(Theme().text);
    painter.drawEllipse(place, kMarkRadius, kMarkRadius);
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace pixelgrove
