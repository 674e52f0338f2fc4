#include "ui/channels/ChannelThumbnail.h"

#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "core/EditingForm.h"
#include "media/LiveFeeds.h"
#include "ui/channels/ChannelDrop.h"
#include "ui/channels/ChannelPictures.h"
#include "ui/text/ChannelTooltip.h"
#include "windows/widgets/DroppedFiles.h"

namespace pixelgrove {

namespace {

constexpr QRgb kGround = 0xffd3d3d3;
constexpr double kLetterHeight = 0.9;  // of the thumbnail's
constexpr int kTooltipWidth = 1000;

// The text with line ends put in where a line would be wider: paths have no blanks to break at.
QString Broken(const QString& text, const QFontMetrics& metrics, int width) {
    QStringList lines;
    for (QString line : text.split(u'\n')) {
        while (metrics.horizontalAdvance(line) > width) {
            qsizetype fitting = 1;
            while (fitting < line.size() && metrics.horizontalAdvance(line, int(fitting) + 1) <= width)
                ++fitting;
            lines.append(line.left(fitting));
            line.remove(0, fitting);
        }
        lines.append(line);
    }
    return lines.join(u'\n');
}

void PaintLetter(QPainter& painter, const QRect& area, uint32_t bufferStage) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(std::max(1, int(area.height() * kLetterHeight)));
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(area, Qt::AlignCenter, QString(QChar(char16_t(u'A' + (bufferStage - kStageBufferA)))));
}

}  // namespace

ChannelThumbnail::ChannelThumbnail(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAcceptDrops(true);
}

void ChannelThumbnail::SetUp(const EditingForm& project, uint32_t channel) {
    project_ = &project;
    channel_ = channel;
}

void ChannelThumbnail::ShowPreview(BitmapRef frame) {
    preview_ = std::move(frame);
    update();
}

const ChannelInput& ChannelThumbnail::Channel() const {
    return project_->channels[project_->currentStage][channel_];
}

const QImage& ChannelThumbnail::PictureOf(const BitmapRef& bitmap) {
    const QSize pixels = size() * devicePixelRatioF();
    if (scaledBitmap_ == bitmap && scaled_.size() == pixels) return scaled_;
    scaledBitmap_ = bitmap;
    // A frame of a run is replaced soon; a chosen picture is scaled once.
    scaled_ = bitmap == preview_ ? QuickPicture(*bitmap, pixels) : SmoothPicture(*bitmap, pixels);
    return scaled_;
}

bool ChannelThumbnail::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    QString text = ChannelTooltip(project_->currentStage, channel_, Channel());
    if (Channel().kind == kChannelWebcam) text += CameraNote();
    text = text.trimmed();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       Broken(text, QFontMetrics(QToolTip::font()), kTooltipWidth), this);
    return true;
}

// A press on it is no press on the form behind it.
void ChannelThumbnail::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void ChannelThumbnail::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->pos())) Q_EMIT Clicked();
}

void ChannelThumbnail::ShowDrag(bool isOver) {
    isDraggedOver_ = isOver;
    update();
}

// What it has no use for goes to the window behind it, which opens projects.
void ChannelThumbnail::dragEnterEvent(QDragEnterEvent* event) {
    if (DroppedMedium(*event->mimeData()).isEmpty()) {
        event->ignore();
        return;
    }
    AcceptAsCopy(*event);
    ShowDrag(true);
}

void ChannelThumbnail::dragLeaveEvent(QDragLeaveEvent*) {
    ShowDrag(false);
}

void ChannelThumbnail::dropEvent(QDropEvent* event) {
    ShowDrag(false);
    AcceptAsCopy(*event);
    Q_EMIT MediumDropped(DroppedMedium(*event->mimeData()));
}

void ChannelThumbnail::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintChannel(painter);
    if (!isDraggedOver_) return;
    painter.setPen(QPen(palette().highlight(), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void ChannelThumbnail::PaintChannel(QPainter& painter) {
    const ChannelInput& channel = Channel();
    painter.fillRect(rect(), QColor(kGround));
    const bool isPicture = channel.kind == kChannelTexture || channel.kind == kChannelCubemap;
    const bool isBuffer = channel.kind == kChannelBuffer;
    const BitmapRef bitmap = isPicture ? channel.faces[0] : isBuffer ? preview_ : nullptr;
    if (bitmap) {
        painter.drawImage(rect(), PictureOf(bitmap));
        return;
    }
    // What isn't shown need not be kept.
    scaledBitmap_ = nullptr;
    scaled_ = QImage();
    const auto source = uint32_t(channel.sourceStage);
    if (isBuffer && source >= kStageBufferA && source <= kStageBufferD) PaintLetter(painter, rect(), source);
    PaintChannelPicture(painter, rect(), channel.kind);
}

}  // namespace pixelgrove
