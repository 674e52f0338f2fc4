// LineGutter: the strip of line numbers at the editor's left, dark grey on white. Lines with errors stand on
// their marker colour, the caret's line is inverted. Main thread.
#pragma once

#include <QFont>
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
    QFont font_;     // of the numbers; the widget's own follows the form's size
    int width_ = 0;  // wanted, in pixels
};

}  // namespace pixelgrove
