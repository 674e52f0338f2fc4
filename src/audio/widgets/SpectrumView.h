// SpectrumView: the bytes of a sound channel as a picture inside its frame: the spectrum in bars, from "Meter
// Low" at the bottom to "Meter High" at the top, and the waveform as a white line over them. Main thread.
#pragma once

#include <QFrame>
#include <QImage>

#include <cstdint>
#include <vector>

#include "media/LiveFeeds.h"

namespace pixelgrove {

class SpectrumView : public QFrame {
    Q_OBJECT

  public:
    explicit SpectrumView(QWidget* parent = nullptr);

    // Paints only where the rows are others than the last ones.
    void Show(const AudioBlock& rows);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void DrawBars(const QSize& size);

    AudioBlock rows_{};
    std::vector<uint8_t> levels_;  // of each column of pixels
    QImage bars_;
};

}  // namespace pixelgrove
