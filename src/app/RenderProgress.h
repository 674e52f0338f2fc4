// RenderProgress: how far a run is, in one line of a terminal that is written over and over. Nothing where
// standard error is no terminal. One thread.
#pragma once

#include <QString>
#include <cstdint>

namespace pixelgrove {

// "frame 12 of 600, 31.4 a second, 0:19 left", where `drawn` frames took so many seconds.
QString ProgressLine(int frame, int last, int drawn, double seconds);

class RenderProgress {
  public:
    explicit RenderProgress(int last);
    ~RenderProgress() { End(); }
    RenderProgress(const RenderProgress&) = delete;
    RenderProgress& operator=(const RenderProgress&) = delete;

    // Frame was drawn, written or not.
    void Show(int frame);
    // Leaves the line as it stands, so that what follows begins a new one.
    void End();

  private:
    const int last_;
    const bool isOn_;
    int64_t startNs_ = 0;
    int64_t shownNs_ = 0;
    int drawn_ = 0;
    bool isLineOpen_ = false;
};

}  // namespace pixelgrove
