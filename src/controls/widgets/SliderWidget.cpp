#include "controls/widgets/SliderWidget.h"

#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "controls/RangeState.h"
#include "controls/widgets/ControlFont.h"
#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr uint32_t kTrackColour = 0xc6c0c0;
constexpr uint32_t kValueColour = 0x808080;
constexpr int kTrackInset = 2;  // of the gradient
constexpr int kPage = 10;       // steps

void DrawOutline(QPainter& painter, const QRect& rect, const QColor& colour, int width = 1) {
    const double half = width / 2.0;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(rect).adjusted(half, half, -half, -half));
}

}  // namespace

SliderWidget::SliderWidget(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void SliderWidget::SetState(const RangeControlState& state) {
    state_ = state;
    update();
}

void SliderWidget::SetTwoHandles(bool twoHandles) {
    twoHandles_ = twoHandles;
    update();
}

void SliderWidget::SetHandle(SliderHandle handle, float value) {
    if (SetHandleValue(state_, handle, value)) update();
}

void SliderWidget::SetCaption(const QString& caption) {
    caption_ = caption;
    update();
}

SliderHandle SliderWidget::KeyHandle() const {
    return twoHandles_ ? lastUsed_ : SliderHandle::Value;
}

void SliderWidget::Move(SliderHandle handle, float value) {
    if (handle == SliderHandle::Low || handle == SliderHandle::High) lastUsed_ = handle;
    if (SetHandleValue(state_, handle, value)) Q_EMIT Moved();
    update();
}

void SliderWidget::SetHovered(SliderHandle handle) {
    if (hovered_ == handle) return;
    hovered_ = handle;
    if (handle == SliderHandle::None)
        unsetCursor();
    else
        setCursor(Qt::SizeHorCursor);
    update();
}

void SliderWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragHandle_ = HandleAt(state_, twoHandles_, size(), event->position().toPoint());
    dragging_ = dragHandle_ != SliderHandle::None;
    if (dragging_ && twoHandles_) lastUsed_ = dragHandle_;
    update();
}

void SliderWidget::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_)
        Move(dragHandle_, DraggedValue(state_, event->position().x(), width()));
    else
        SetHovered(HandleAt(state_, twoHandles_, size(), event->position().toPoint()));
}

void SliderWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragging_ = false;
    SetHovered(HandleAt(state_, twoHandles_, size(), event->position().toPoint()));
    update();
}

void SliderWidget::leaveEvent(QEvent*) {
    if (!dragging_) SetHovered(SliderHandle::None);
}

void SliderWidget::wheelEvent(QWheelEvent* event) {
    event->accept();
    const int delta = event->angleDelta().y();
    if (delta == 0) return;
    SliderHandle handle = SliderHandle::Value;
    if (twoHandles_)
        handle = event->position().y() >= height() / 2.0 ? SliderHandle::High : SliderHandle::Low;
    Move(handle, HandleValue(state_, handle) + (delta > 0 ? 1.0f : -1.0f) * StepOf(state_));
}

void SliderWidget::keyPressEvent(QKeyEvent* event) {
    const bool upOrDown = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (twoHandles_ && upOrDown) {
        lastUsed_ = event->key() == Qt::Key_Up ? SliderHandle::Low : SliderHandle::High;
        update();
        return;
    }
    const SliderHandle handle = KeyHandle();
    const float value = HandleValue(state_, handle);
    const float step = StepOf(state_);
    switch (event->key()) {
        case Qt::Key_Right:
        case Qt::Key_Up:
            return Move(handle, value + step);
        case Qt::Key_Left:
        case Qt::Key_Down:
            return Move(handle, value - step);
        case Qt::Key_PageUp:
            return Move(handle, value + kPage * step);
        case Qt::Key_PageDown:
            return Move(handle, value - kPage * step);
        case Qt::Key_Home:
            return Move(handle, state_.minimum);
        case Qt::Key_End:
            return Move(handle, state_.maximum);
        default:
            QWidget::keyPressEvent(event);
    }
}

void SliderWidget::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void SliderWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

void SliderWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), FromBgr(kTrackColour));
    if (twoHandles_) DrawGradient(painter);
    DrawOutline(painter, rect(), Qt::white);
    if (hasFocus()) {
        DrawOutline(painter, rect(), Theme().text, 2);
        DrawOutline(painter, rect().adjusted(2, 2, -2, -2), Theme().window);
    }
    if (!caption_.isEmpty()) DrawCaption(painter);
    if (twoHandles_) {
        // The one that was moved last lies on top.
        if (lastUsed_ == SliderHandle::High) DrawHandle(painter, SliderHandle::Low, kLowHandleColour);
        DrawHandle(painter, SliderHandle::High, kHighHandleColour);
        if (lastUsed_ == SliderHandle::Low) DrawHandle(painter, SliderHandle::Low, kLowHandleColour);
    } else {
        DrawHandle(painter, SliderHandle::Value, kValueColour);
    }
}

void SliderWidget::DrawGradient(QPainter& painter) const {
    const int inner = width() - 2 * kTrackInset;
    int left = int(TrackFraction(state_, state_.low) * inner);
    int right = int(TrackFraction(state_, state_.high) * inner);
    uint32_t from = Theme().rows[UiColour::MeterLow];
    uint32_t to = Theme().rows[UiColour::MeterHigh];
    if (state_.low > state_.high) {
        std::swap(left, right);
        std::swap(from, to);
    }
    const int steps = std::min(right - left, kGradientSteps);
    if (steps <= 0 || height() <= 2 * kTrackInset) return;
    QImage strip(steps, 1, QImage::Format_RGB32);
    for (int i = 0; i < steps; ++i)
        strip.setPixelColor(i, 0, FromBgr(MixedColour(from, to, i, steps)));
    painter.drawImage(QRect(kTrackInset + left, kTrackInset, right - left, height() - 2 * kTrackInset),
                      strip);
}

void SliderWidget::DrawHandle(QPainter& painter, SliderHandle handle, uint32_t colour) const {
    const QRect box = HandleRect(state_, handle, size());
    const QColor fill = FromBgr(colour);
    painter.fillRect(box, fill);
    if (dragging_ && dragHandle_ == handle)
        DrawOutline(painter, box, Theme().text, 2);
    else
        DrawOutline(painter, box, hovered_ == handle ? QColor(Qt::white) : fill.darker(170));
    // A notch on the one that keys move.
    if (hasFocus() && KeyHandle() == handle)
        painter.fillRect(box.center().x(), box.top() + box.height() / 4, 2, box.height() / 2, Theme().text);
}

void SliderWidget::DrawCaption(QPainter& painter) const {
    const bool inUse = dragging_ || hasFocus() || hovered_ != SliderHandle::None;
    const QString text = inUse ? RangeText(state_, state_.value) : caption_;
    // On the longer side of the handle, where there is room.
    const QRect handle = HandleRect(state_, SliderHandle::Value, size());
    const QRect inner = rect().adjusted(kTrackInset, 0, -kTrackInset, 0);
    QRect room = inner;
    if (handle.center().x() < width() / 2)
        room.setLeft(std::max(inner.left(), handle.right() + 2));
    else
        room.setRight(std::min(inner.right(), handle.left() - 2));
    QFont font = this->font();
    font.setPixelSize(std::max(1, height() * 9 / 20));
    font = NarrowedFont(font, text, room.width());
    if (QFontMetrics(font).horizontalAdvance(text) > room.width()) return;
    painter.setFont(font);
    painter.setPen(FromBgr(kTrackColour).darker(300));
    painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, text);
}

}  // namespace pixelgrove
