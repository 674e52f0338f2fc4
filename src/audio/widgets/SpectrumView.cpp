#include "audio/widgets/SpectrumView.h"

#include <QPainter>
#include <QPen>
#include <array>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kRows = 256;  // as many as a byte has levels
constexpr int kFull = kRows - 1;

QRgb GradientColour(int row, const QColor& high, const QColor& low) {
    const auto mixed = [row](int top, int bottom) { return ((kFull - row) * top + row * bottom) / kFull; };
    return qRgb(mixed(high.red(), low.red()), mixed(high.green(), low.green()),
                mixed(high.blue(), low.blue()));
}

}  // namespace

SpectrumView::SpectrumView(QWidget* parent) : QFrame(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void SpectrumView::Show(const AudioBlock& rows) {
    if (rows_ == rows) return;
    rows_ = rows;
    update();
}

// The picture of 512 by 256, stretched to the size that it is shown in, which saves the toolkit's stretching.
void SpectrumView::DrawBars(const QSize& size) {
    if (bars_.size() != size) bars_ = QImage(size, QImage::Format_RGB32);
    if (levels_.size() != size_t(size.width())) levels_.resize(size_t(size.width()));
    for (size_t x = 0; x < levels_.size(); ++x)
        levels_[x] = rows_[x * kAudioColumns / levels_.size()];
    const QColor high = FromBgr(Theme().rows[UiColour::MeterHigh]);
    const QColor low = FromBgr(Theme().rows[UiColour::MeterLow]);
    for (int y = 0; y < size.height(); ++y) {
        const int row = y * kRows / size.height();
        const QRgb colour = GradientColour(row, high, low);
        const int least = kFull - row;
        auto* line = reinterpret_cast<QRgb*>(bars_.scanLine(y));
        for (size_t x = 0; x < levels_.size(); ++x)
            line[x] = levels_[x] >= least ? colour : qRgb(0, 0, 0);
    }
}

void SpectrumView::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    // By the screen's pixels, whole ones, so that all is sharp at any scale, and cheap.
    const QRect area = contentsRect();
    const double scale = devicePixelRatioF();
    const QSize size(int(area.width() * scale), int(area.height() * scale));
    if (size.isEmpty()) return;
    DrawBars(size);
    std::array<QPoint, kAudioColumns> points;
    for (int i = 0; i < kAudioColumns; ++i) {
        const int level = rows_[size_t(kAudioColumns + i)];
        points[size_t(i)] = {i * size.width() / kAudioColumns, (kFull - level) * size.height() / kRows};
    }
    QPainter onBars(&bars_);
    onBars.setPen(QPen(Qt::white, 1));
    onBars.drawPolyline(points.data(), kAudioColumns);
    onBars.end();
    QPainter(this).drawImage(area, bars_);
}

}  // namespace pixelgrove
