// WavePreview: the picture of what a control's value does over one cycle of time. Main thread.
#pragma once

#include <QImage>
#include <QWidget>

#include "controls/Modulation.h"

namespace pixelgrove {

class WavePreview : public QWidget {
    Q_OBJECT

  public:
    explicit WavePreview(QWidget* parent);

    // Draws the state's kind at the widget's present size. drawRandom: the kind Random takes a new level, and
    // leaves it in state.value.
    void Draw(RangeControlState& state, bool drawRandom);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage image_;
    ControlDice dice_;
};

}  // namespace pixelgrove
