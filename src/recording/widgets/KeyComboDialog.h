// KeyComboDialog: the user's list of key combinations that start and stop screen recorders. Rows are added
// and removed at once; which one is chosen is kept by OK. Main thread.
#pragma once

#include <memory>

#include "recording/widgets/KeyComboList.h"
#include "windows/widgets/Dialogs.h"

class QLineEdit;

namespace Ui {
class KeyComboDialog;
}

namespace pixelgrove {

struct RecorderSettings;

class KeyComboDialog : public FrameDialog {
    Q_OBJECT

  public:
    // The records outlive the dialog.
    KeyComboDialog(QWidget* owner, RecorderSettings& recorder, RecorderTable& table);
    ~KeyComboDialog() override;

  private:
    void FillList();
    KeyComboEdits Edits() const;
    void ShowRow(const KeyCombo* row);
    void ShowState();
    void Normalise(QLineEdit& edit);
    void Add();
    void Delete();
    void Accept();

    const std::unique_ptr<Ui::KeyComboDialog> form_;
    RecorderSettings& recorder_;
    RecorderTable& table_;
};

}  // namespace pixelgrove
