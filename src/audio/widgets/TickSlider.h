// TickSlider: a slider with tick marks below its groove, which styled sliders lack. Main thread.
#pragma once

#include <QSlider>

namespace pixelgrove {

// The tick interval says where the marks are; at 0 there are none.
class TickSlider : public QSlider {
    Q_OBJECT

  public:
    explicit TickSlider(QWidget* parent = nullptr) : QSlider(Qt::Horizontal, parent) {}

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace pixelgrove
