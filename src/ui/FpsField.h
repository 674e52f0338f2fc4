// FpsField: the target rate. Keys and arrows change its text only; the value counts when the field is left or
// Enter is pressed, which editingFinished tells. Main thread.
#pragma once

#include <QSpinBox>

namespace pixelgrove {

class FpsField : public QSpinBox {
    Q_OBJECT

  public:
    explicit FpsField(QWidget* parent = nullptr);

    // The number in the text, also one that is out of range; nothing else counts as a number and reads as 0.
    // False in ok then.
    int Number(bool* ok = nullptr) const;
    // It has the focus, and its text was changed by keys or arrows and is not committed.
    bool IsBeingChanged() const;

    void stepBy(int steps) override;

  protected:
    // Whatever is typed stands until it is committed, and is clamped only then.
    QValidator::State validate(QString& text, int& position) const override;
    int valueFromText(const QString& text) const override;
    // Of the text, which may be far from the last value.
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace pixelgrove
