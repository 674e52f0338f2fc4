#include "windows/widgets/CaptionBar.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPainterPath>
#include <initializer_list>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kIconSize = 16;
constexpr int kMargin = 6;
constexpr int kLeastTitle = 40;

// Left free below the content where the frame's border lies above it, or it would seem to hang too low.
constexpr int kBelowContent = 4;
constexpr double kPen = 1.3;

// How much of the text's colour is laid over the caption, so that it shows on every ground.
constexpr float kHoverTint = 0.16F;
constexpr float kDownTint = 0.3F;

enum class Shape { Minimise, Maximise, Restore, Close };

// The shape in a square of 10 pixels. Straight lines lie on half pixels, which keeps them sharp.
QPainterPath PathOf(Shape shape) {
    QPainterPath path;
    switch (shape) {
        case Shape::Minimise:
            path.moveTo(0.5, 5.5);
            path.lineTo(9.5, 5.5);
            break;
        case Shape::Maximise:
            path.addRect(0.5, 0.5, 9, 9);
            break;
        case Shape::Restore:
            path.addRect(0.5, 2.5, 7, 7);
            path.moveTo(2.5, 2.5);
            path.lineTo(2.5, 0.5);
            path.lineTo(9.5, 0.5);
            path.lineTo(9.5, 7.5);
            path.lineTo(7.5, 7.5);
            break;
        case Shape::Close:
            path.moveTo(0.5, 0.5);
            path.lineTo(9.5, 9.5);
            path.moveTo(9.5, 0.5);
            path.lineTo(0.5, 9.5);
            break;
    }
    return path;
}

}  // namespace

class CaptionButton : public QAbstractButton {
  public:
    CaptionButton(CaptionBar* bar, Shape shape, const char16_t* name, const QString& title)
        : QAbstractButton(bar), shape_(shape) {
        setObjectName(QString::fromUtf16(name));
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
        Show(shape, title);
    }

    void Show(Shape shape, const QString& title) {
        shape_ = shape;
        setToolTip(title);
        setAccessibleName(title);
        update();
    }

    void SetActive(bool active) {
        active_ = active;
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        const ThemeColours& theme = Theme();
        QPainter painter(this);
        QColor line = isEnabled() && active_ ? theme.text : theme.faintText;
        if (isEnabled() && (underMouse() || isDown())) {
            const bool close = shape_ == Shape::Close;
            QColor ground = close ? theme.accent : theme.text;
            if (!close) ground.setAlphaF(isDown() ? kDownTint : kHoverTint);
            painter.fillRect(rect(), ground);
            line = close ? theme.accentText : theme.text;
        }
        painter.translate((width() - 10) / 2, (height() - 10) / 2);
        // Only slanting lines gain from it; the others would get a soft rim.
        painter.setRenderHint(QPainter::Antialiasing, shape_ == Shape::Close);
        QPen pen(line, shape_ == Shape::Close ? kPen : 1.0);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.strokePath(PathOf(shape_), pen);
    }

  private:
    Shape shape_;
    bool active_ = false;
};

CaptionBar::CaptionBar(QWidget* frame, bool withSizeButtons) : QWidget(frame) {
    setFont(FormFont());
    setCursor(Qt::ArrowCursor);
    if (withSizeButtons) {
        minimise_ = new CaptionButton(this, Shape::Minimise, u"minimiseButton", tr("Minimise"));
        maximise_ = new CaptionButton(this, Shape::Maximise, u"maximiseButton", tr("Maximise"));
        connect(minimise_, &QAbstractButton::clicked, this, &CaptionBar::MinimiseClicked);
        connect(maximise_, &QAbstractButton::clicked, this, &CaptionBar::MaximiseClicked);
    }
    close_ = new CaptionButton(this, Shape::Close, u"closeButton", tr("Close"));
    connect(close_, &QAbstractButton::clicked, this, &CaptionBar::CloseClicked);
}

void CaptionBar::SetTitle(const QString& title) {
    title_ = title;
    update();
}

void CaptionBar::SetIcon(const QIcon& icon) {
    icon_ = icon;
    update();
}

void CaptionBar::SetActive(bool active) {
    active_ = active;
    for (CaptionButton* button : {minimise_, maximise_, close_})
        if (button) button->SetActive(active);
    update();
}

void CaptionBar::SetMaximised(bool maximised) {
    maximised_ = maximised;
    PlaceButtons();
    update();
    if (maximise_)
        maximise_->Show(maximised ? Shape::Restore : Shape::Maximise,
                        maximised ? tr("Restore") : tr("Maximise"));
}

void CaptionBar::SetCanMinimise(bool can) {
    if (minimise_) minimise_->setEnabled(can);
}

int CaptionBar::SmallestWidth() const {
    return (maximise_ ? 3 : 1) * kCaptionButtonWidth + kIconSize + 2 * kMargin + kLeastTitle;
}

int CaptionBar::ContentHeight() const {
    return maximised_ ? height() : height() - kBelowContent;
}

void CaptionBar::resizeEvent(QResizeEvent*) {
    PlaceButtons();
}

void CaptionBar::PlaceButtons() {
    buttonsLeft_ = width();
    for (CaptionButton* button : {close_, maximise_, minimise_}) {
        if (!button) continue;
        buttonsLeft_ -= kCaptionButtonWidth;
        button->setGeometry(buttonsLeft_, 0, kCaptionButtonWidth, ContentHeight());
    }
}

void CaptionBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    int x = kMargin;
    if (!icon_.isNull()) {
        icon_.paint(&painter, x, (ContentHeight() - kIconSize) / 2, kIconSize, kIconSize);
        x += kIconSize + kMargin;
    }
    const QRect room(x, 0, buttonsLeft_ - kMargin - x, ContentHeight());
    if (room.width() <= 0) return;
    painter.setPen(active_ ? Theme().text : Theme().faintText);
    // One line, whatever the title holds.
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(title_, Qt::ElideRight, room.width()));
}

}  // namespace pixelgrove
