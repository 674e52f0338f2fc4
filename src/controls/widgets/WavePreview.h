// WavePreview: the picture of what a control's value does over one cycle of time. While frames are drawn and
// it can be seen, a mark shows where the wave is, and noise is drawn anew. Main thread.
#pragma once

#include <QBasicTimer>
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
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void DrawMark(QPainter& painter);

    RangeControlState state_;  // as it was drawn last
    QImage image_;
    ControlDice dice_;
    QBasicTimer timer_;
    int ticks_ = 0;
    double waveTime_ = -1;  // of the last tick; below 0 without a frame
};

}  // namespace pixelgrove
