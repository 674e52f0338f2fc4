// LineGutter: the strip of line numbers at the editor's left. Lines with errors stand on the marker colour,
// the caret's line is inverted. Main thread.
#pragma once

#include <QWidget>

namespace pixelgrove {

class CodeView;

class LineGutter : public QWidget {
    Q_OBJECT

  public:
    explicit LineGutter(QWidget* parent = nullptr);

    // The editor whose lines are numbered; it outlives the strip's last paint.
    void Attach(CodeView& editor);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    CodeView* editor_ = nullptr;
    int digits_ = 0;
};

}  // namespace pixelgrove
