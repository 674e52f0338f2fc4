// RecordingDialog: how recordings are made: by which recorder, and for the frame recorder into which files,
// at what size, and with what rest between frames. Main thread.
#pragma once

#include <memory>

#include "recording/widgets/KeyComboList.h"
#include "windows/widgets/Dialogs.h"

namespace Ui {
class RecordingDialog;
}

namespace pixelgrove {

struct AppState;
struct RecorderSettings;

class RecordingDialog : public FrameDialog {
    Q_OBJECT

  public:
    // The records outlive the dialog. OK stores what it shows; the selected recorder and the rest as the
    // slider sets it are in force at once.
    RecordingDialog(QWidget* owner, AppState& app, RecorderSettings& recorder, RecorderTable& table);
    ~RecordingDialog() override;

  private:
    void ShowSettings();
    void Connect();
    void FillList();
    KeyComboEdits Edits() const;
    void ShowCombo(const KeyCombo& combo);
    void ShowSize(uint32_t width, uint32_t height);
    void ShowSizeNote();
    void ShowSample(const QString& folder, const QString& format);
    void EditCombos();
    void ChooseFolder();
    void TakeSliderDelay(int delayMs);
    void Accept();

    const std::unique_ptr<Ui::RecordingDialog> form_;
    AppState& app_;
    RecorderSettings& recorder_;
    RecorderTable& table_;
};

}  // namespace pixelgrove
