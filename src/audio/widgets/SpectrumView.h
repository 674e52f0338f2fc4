// SpectrumView: the bytes of a sound channel as a picture inside its frame: the spectrum in bars, from "Meter
// Low" at the bottom to "Meter High" at the top, and the waveform as a white line over them. Main thread.
#pragma once

#include <QFrame>
#include <QImage>

#include <optional>

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
    void DrawBars();

    std::optional<AudioBlock> rows_;
    QImage bars_;
};

}  // namespace pixelgrove
