// NumberBox: the text of one value. Enter and leaving the box commit what was typed, Escape takes it back.
// Main thread.
#pragma once

#include <QLineEdit>

namespace pixelgrove {

class NumberBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit NumberBox(QWidget* parent);

    // Shows the text; nothing typed before it counts any more.
    void Show(const QString& text);
    // A stripe of the colour at the left, as of the handle that the box belongs to.
    void SetStripe(const QColor& colour);

  Q_SIGNALS:
    // The user changed the text to this number. `whole` is false where more than a number was typed. What is
    // no number at all is taken back without a word.
    void Committed(float value, bool whole);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Commit();

    QString shown_;  // the text that is committed
    QColor stripe_;
};

}  // namespace pixelgrove
