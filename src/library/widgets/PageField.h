// PageField: the number of a page, to be typed or stepped. It only reports; who owns it says what it shows.
// Main thread.
#pragma once

#include <QAbstractSpinBox>

namespace pixelgrove {

class PageField : public QAbstractSpinBox {
    Q_OBJECT

  public:
    explicit PageField(QWidget* parent = nullptr);

    void Show(quint32 page);
    QString Text() const;

  Q_SIGNALS:
    void Stepped(int step);
    // Return was pressed, or the focus left.
    void Committed();

  protected:
    void stepBy(int steps) override;
    StepEnabled stepEnabled() const override;
    QValidator::State validate(QString& input, int& position) const override;
};

}  // namespace pixelgrove
