// ComboControl: the widget of a control with a list of options. Main thread.
#pragma once

#include "controls/widgets/ControlWidget.h"

class QPushButton;

namespace pixelgrove {

class ControlCombo;
class ElidedLabel;

class ComboControl : public ControlWidget {
    Q_OBJECT

  public:
    // Randomize starts raised, whatever the record says.
    ComboControl(const UniformControl& record, QWidget* parent);

    void Save(UniformControl& record) const override;
    void Load(const UniformControl& record) override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Show(const UniformControl& record);
    void ShowToolTip();

    ComboControlState state_;
    ElidedLabel* name_;
    ControlCombo* options_;
    QPushButton* randomize_;
};

}  // namespace pixelgrove
