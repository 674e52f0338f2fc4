#include "library/widgets/ProgressLine.h"

#include <QPainter>
#include <algorithm>

namespace pixelgrove {

namespace {

constexpr int kToothPixels = 4;
constexpr int kFullChannel = 255;

}  // namespace

QImage ProgressComb(int width, int filled) {
    QImage comb(std::max(1, width), 1, QImage::Format_RGB32);
    comb.fill(Qt::black);
    const int last = std::max(1, width - 1);
    for (int x = 0; x < std::min(width, filled); ++x) {
        const int red = kFullChannel * x / last;
        if (x % kToothPixels != 0) comb.setPixel(x, 0, qRgb(red, 0, kFullChannel - red));
    }
    return comb;
}

ProgressLine::ProgressLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ProgressLine::Say(const QString& text) {
    fraction_ = -1;
    text_ = text;
    setText(text);
    setToolTip(text);  // it may be longer than the line
    update();
}

void ProgressLine::ShowProgress(double fraction, const QString& text) {
    fraction_ = std::clamp(fraction, 0.0, 1.0);
    text_ = text;
    setText(text);
    setToolTip({});
    update();
}

void ProgressLine::ShowMeanwhile(const QString& text) {
    setText(text.isEmpty() ? text_ : text);
    update();
}

void ProgressLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    if (!IsProgress()) {
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
        return;
    }
    painter.drawImage(rect(), ProgressComb(width(), std::max(1, int(width() * fraction_))));
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, shown);
}

}  // namespace pixelgrove
