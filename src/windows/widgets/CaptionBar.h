// CaptionBar: what a window's frame shows above its content: icon, title and the buttons. The frame owns and
// places it, paints the ground behind it, and handles every press beside the buttons. Main thread.
#pragma once

#include <QIcon>
#include <QWidget>

#include "windows/FrameGeometry.h"

class QAbstractButton;

namespace pixelgrove {

class CaptionBar : public QWidget {
    Q_OBJECT

  public:
    // withSizeButtons: minimise and maximise beside close.
    CaptionBar(QWidget* frame, bool withSizeButtons);

    void SetTitle(const QString& title);
    void SetIcon(const QIcon& icon);
    // Whether it is that of the active window, which is painted stronger.
    void SetActive(bool active);
    void SetMaximised(bool maximised);
    void SetCanMinimise(bool can);

    // Below this, buttons would be cut off.
    int SmallestWidth() const;

  Q_SIGNALS:
    void MinimiseClicked();
    void MaximiseClicked();
    void CloseClicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    int ContentHeight() const;
    void PlaceButtons();

    QString title_;
    QIcon icon_;
    bool active_ = false;
    bool maximised_ = false;
    // From left to right; the first two are null in captions without them.
    class CaptionButton* minimise_ = nullptr;
    CaptionButton* maximise_ = nullptr;
    CaptionButton* close_ = nullptr;
    int buttonsLeft_ = 0;
};

}  // namespace pixelgrove
