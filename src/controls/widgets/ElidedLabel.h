// ElidedLabel: one line of text, shown to the letter. What is too long for it ends in dots, and the tool tip
// has the whole of it. Main thread.
#pragma once

#include <QWidget>

namespace pixelgrove {

class ElidedLabel : public QWidget {
    Q_OBJECT

  public:
    ElidedLabel(Qt::Alignment alignment, QWidget* parent);

    QString Text() const { return text_; }
    void SetText(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QString Shown() const;

    Qt::Alignment alignment_;
    QString text_;
};

// The text as a tool tip: to the letter, broken into lines where it is long.
QString PlainToolTip(const QString& text);

}  // namespace pixelgrove
