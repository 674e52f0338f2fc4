#include "audio/widgets/TickSlider.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QStyleOptionSlider>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kTickLength = 4;
constexpr int kTickGap = 3;  // below the handle

}  // namespace

void TickSlider::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    QStyleOptionSlider option;
    initStyleOption(&option);
    for (int value = minimum(); tickInterval() > 0 && value <= maximum(); value += tickInterval()) {
        option.sliderPosition = option.sliderValue = value;
        const QRect handle =
            style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
        painter.fillRect(handle.center().x(), handle.bottom() + kTickGap, 1, kTickLength, Theme().faintText);
    }
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
    QSlider::paintEvent(event);
}

}  // namespace pixelgrove
