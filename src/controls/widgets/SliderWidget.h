// SliderWidget: the track with one handle, or with a low and a high one, that a numeric control is set by.
//
// The mouse drags handles, the wheel moves one by a step: with two handles the low one above the track's
// middle, the high one below it. Keys: Left and Right move a handle by a step, Page Up and Page Down by ten,
// Home and End to the bounds. Up and Down choose the upper or the lower of two handles, else they move the
// only one. Main thread.
#pragma once

#include <QWidget>

#include "controls/SliderTrack.h"

namespace pixelgrove {

inline constexpr uint32_t kLowHandleColour = 0x588058;
inline constexpr uint32_t kHighHandleColour = 0x585880;

class SliderWidget : public QWidget {
    Q_OBJECT

  public:
    explicit SliderWidget(QWidget* parent);

    const RangeControlState& State() const { return state_; }
    void SetState(const RangeControlState& state);
    void SetTwoHandles(bool twoHandles);
    // Takes the value into the bounds.
    void SetHandle(SliderHandle handle, float value);

    // A word on the track that says what it sets. While the track is in use its value stands there instead.
    void SetCaption(const QString& caption);

  Q_SIGNALS:
    // The user moved a handle to another value.
    void Moved();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    SliderHandle KeyHandle() const;
    void Move(SliderHandle handle, float value);
    void SetHovered(SliderHandle handle);
    void DrawGradient(QPainter& painter) const;
    void DrawHandle(QPainter& painter, SliderHandle handle, uint32_t colour) const;
    void DrawCaption(QPainter& painter) const;

    RangeControlState state_;
    bool twoHandles_ = false;
    QString caption_;
    bool dragging_ = false;
    SliderHandle dragHandle_ = SliderHandle::None;
    SliderHandle hovered_ = SliderHandle::None;
    SliderHandle lastUsed_ = SliderHandle::Low;  // of two: which one keys move
};

}  // namespace pixelgrove
