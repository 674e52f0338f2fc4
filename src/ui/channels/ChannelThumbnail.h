// ChannelThumbnail: the picture of what a channel of the shown stage reads, with a tooltip that tells more.
// It can be pressed, and takes a picture or a volume that is dropped on it. Main thread.
#pragma once

#include <QImage>
#include <QWidget>

#include "media/Bitmap.h"

class QPainter;

namespace pixelgrove {

struct EditingForm;
struct ChannelInput;

class ChannelThumbnail : public QWidget {
    Q_OBJECT

  public:
    explicit ChannelThumbnail(QWidget* parent = nullptr);
    // Once, before it is shown: it paints itself from this channel, 0..3, of the project's shown stage.
    void SetUp(const EditingForm& project, uint32_t channel);
    // A frame of the buffer that the channel reads, shown in place of the buffer's letter; null brings the
    // letter back.
    void ShowPreview(BitmapRef frame);
    bool HasPreview() const { return preview_ != nullptr; }

  Q_SIGNALS:
    void Clicked();
    void MediumDropped(const QString& path);

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    const ChannelInput& Channel() const;
    const QImage& PictureOf(const BitmapRef& bitmap);

    void ShowDrag(bool isOver);
    void PaintChannel(QPainter& painter);

    const EditingForm* project_ = nullptr;
    uint32_t channel_ = 0;
    BitmapRef preview_;
    // The last bitmap that was scaled, as it was painted.
    BitmapRef scaledBitmap_;
    QImage scaled_;
    bool isDraggedOver_ = false;
};

}  // namespace pixelgrove
