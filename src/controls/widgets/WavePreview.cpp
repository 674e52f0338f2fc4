#include "controls/widgets/WavePreview.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/SliderTrack.h"
#include "look/widgets/Theme.h"
#include "platform/Random.h"

namespace pixelgrove {

namespace {

constexpr uint32_t kGround = 0x461914;
constexpr uint32_t kAboveWave = 0xd24b3c;

// Pixels from the top of what is that high; 0 for what is no number.
int FromTop(double level, int height) {
    const double y = (1.0 - level) * height;
    return std::isnan(y) ? 0 : int(std::clamp(y, 0.0, double(height)));
}

}  // namespace

WavePreview::WavePreview(QWidget* parent) : QWidget(parent), dice_(SystemRandom32()) {
    setAttribute(Qt::WA_OpaquePaintEvent);
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
}

void WavePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(rect(), image_);
    // Sunken into the window.
    painter.setPen(Theme().line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace pixelgrove
