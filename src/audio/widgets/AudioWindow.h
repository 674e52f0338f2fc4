// AudioWindow: how the spectrum is made of the sound, with what comes of it while the user sets it.
//
// A change counts from the next block of sound on. While nobody can see the window it neither looks at the
// sound nor paints. Main thread; deletes itself once it is closed.
#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>

#include "audio/AudioParameters.h"
#include "media/LiveFeeds.h"
#include "windows/widgets/FrameWindow.h"

namespace Ui {
class SpectrumWindow;
}

namespace pixelgrove {

class AudioWindow : public FrameWindow {
    Q_OBJECT

  public:
    // The parameters outlive the window.
    explicit AudioWindow(AudioParameters& parameters);
    ~AudioWindow() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void SetUpForm();
    void ConnectParameters();
    void ShowParameters();
    void FollowSight();
    void ShowSound();
    QString StateText(const AudioBlock& rows);

    AudioParameters& parameters_;
    const std::unique_ptr<Ui::SpectrumWindow> form_;
    QTimer timer_;
    uint64_t blocks_ = 0;  // when they last changed
    int ticksWithout_ = 0;
};

}  // namespace pixelgrove
