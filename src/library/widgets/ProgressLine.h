// ProgressLine: a line of text that shows how far something is: a comb of colours from blue to red, as wide
// as what is done, with the text on it. Main thread.
#pragma once

#include <QImage>
#include <QLabel>
#include <QString>

namespace pixelgrove {

class ProgressLine : public QLabel {
    Q_OBJECT

  public:
    explicit ProgressLine(QWidget* parent = nullptr);

    // The text alone.
    void Say(const QString& text);
    // fraction is from 0 to 1.
    void ShowProgress(double fraction, const QString& text);
    // In place of the text until the next call; an empty one brings the text back.
    void ShowMeanwhile(const QString& text);
    bool IsProgress() const { return fraction_ >= 0; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double fraction_ = -1;  // below 0 for none
    QString text_;          // what Say or ShowProgress was given last
};

// The comb for a width in pixels of which `filled` are done, one row high. Pure.
QImage ProgressComb(int width, int filled);

}  // namespace pixelgrove
