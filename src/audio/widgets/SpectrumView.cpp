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

SpectrumView::SpectrumView(QWidget* parent)
    : QFrame(parent), bars_(kAudioColumns, kRows, QImage::Format_RGB32) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    bars_.fill(Qt::black);
}

void SpectrumView::Show(const AudioBlock& rows) {
    if (rows_ == rows) return;
    rows_ = rows;
    DrawBars();
    update();
}

void SpectrumView::DrawBars() {
    const QColor high = FromBgr(Theme().rows[UiColour::MeterHigh]);
    const QColor low = FromBgr(Theme().rows[UiColour::MeterLow]);
    for (int row = 0; row < kRows; ++row) {
        const QRgb colour = GradientColour(row, high, low);
        const int least = kFull - row;
        auto* line = reinterpret_cast<QRgb*>(bars_.scanLine(row));
        for (size_t x = 0; x < kAudioColumns; ++x)
            line[x] = (*rows_)[x] >= least ? colour : qRgb(0, 0, 0);
    }
}

void SpectrumView::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    const QRect area = contentsRect();
    QPainter painter(this);
    painter.drawImage(area, bars_);
    if (!rows_) return;
    // By the screen's pixels, whole ones, so that the line is sharp and cheap at any scale.
    const double scale = devicePixelRatioF();
    const int wide = int(area.width() * scale);
    const int high = int(area.height() * scale);
    std::array<QPoint, kAudioColumns> points;
    for (int i = 0; i < kAudioColumns; ++i) {
        const int level = (*rows_)[size_t(kAudioColumns + i)];
        points[size_t(i)] = {i * wide / kAudioColumns, (kFull - level) * high / kRows};
    }
    painter.translate(area.topLeft());
    painter.scale(1 / scale, 1 / scale);
    QPen pen(Qt::white, 1);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawPolyline(points.data(), kAudioColumns);
}

}  // namespace pixelgrove
