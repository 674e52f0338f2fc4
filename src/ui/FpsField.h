// FpsField: the target rate as an edit with two small arrows. The arrows change the edit's text only; the
// value counts when the edit is left or Enter is pressed. Main thread.
#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace pixelgrove {

class FpsField : public QWidget {
    Q_OBJECT

  public:
    explicit FpsField(QWidget* parent = nullptr);

    // The number in the edit; nothing else counts as a number and reads as 0. False in ok then.
    int Number(bool* ok = nullptr) const;
    // Takes the place of what is being entered, too.
    void SetNumber(int number);
    // The edit has the focus, and its text was changed by keys or arrows and is not committed.
    bool IsBeingChanged() const;
    QLineEdit* Edit() const { return edit_; }

  Q_SIGNALS:
    // The edit lost the focus or Enter was pressed.
    void Committed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Step(int by);

    QLineEdit* edit_;
    QToolButton* up_ = nullptr;
    QToolButton* down_ = nullptr;
};

}  // namespace pixelgrove
