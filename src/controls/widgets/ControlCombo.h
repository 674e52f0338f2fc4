// ControlCombo: a list in a control widget. A text too long for the closed box ends in dots; the opened list
// is as wide as its texts. Main thread.
#pragma once

#include <QComboBox>

namespace pixelgrove {

class ControlCombo : public QComboBox {
    Q_OBJECT

  public:
    explicit ControlCombo(QWidget* parent);

    // The width that the closed box has for its text.
    int TextWidth() const;
    // Makes room for all rows in the opened list, as far as the screen has it. After a change of rows or
    // font.
    void WidenList();

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace pixelgrove
