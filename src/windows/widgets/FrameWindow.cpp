#include "windows/widgets/FrameWindow.h"

#include <QMenuBar>
#include <QMoveEvent>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>
#include <algorithm>

#include "look/widgets/Theme.h"
#include "windows/widgets/CaptionBar.h"
#include "windows/widgets/ManagerDrag.h"
#include "windows/widgets/PlaceWatch.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

constexpr int kFarthest = 32000;  // device pixels; X11 counts with 16 bits

Qt::WindowFlags FlagsOf(FrameWindow::Kind kind) {
    return (kind == FrameWindow::Kind::Window ? Qt::Window : Qt::Dialog) | Qt::FramelessWindowHint;
}

QColor ThreeQuarters(const QColor& colour) {
    return {colour.red() * 3 / 4, colour.green() * 3 / 4, colour.blue() * 3 / 4};
}

}  // namespace

FrameWindow::FrameWindow(Kind kind, QWidget* owner)
    : QWidget(owner, FlagsOf(kind)), kind_(kind), focus_(*this) {
    place_ = new PlaceWatch(this);
    managerDrag_ = new ManagerDrag(this);
    caption_ = new CaptionBar(this, kind == Kind::Window);
    client_ = new QWidget(this);
    // Or they would show the sizing cursor that the frame had when the mouse went on from its border.
    client_->setCursor(Qt::ArrowCursor);
    client_->setAutoFillBackground(true);  // it covers the border's innermost pixel
    setMouseTracking(true);
    caption_->setMouseTracking(true);  // a drag that lost its button ends at the next move
    connect(this, &QWidget::windowTitleChanged, caption_, &CaptionBar::SetTitle);
    connect(this, &QWidget::windowIconChanged, caption_, &CaptionBar::SetIcon);
    connect(caption_, &CaptionBar::MinimiseClicked, this, &FrameWindow::Minimise);
    connect(caption_, &CaptionBar::MaximiseClicked, this, [this] { SetMaximised(!maximised_); });
    connect(caption_, &CaptionBar::CloseClicked, this, &QWidget::close);
    connect(place_, &PlaceWatch::Settled, this, &FrameWindow::TakeSettled);
    connect(managerDrag_, &ManagerDrag::Ended, this, &FrameWindow::EndManagerDrag);
    caption_->SetIcon(windowIcon());
    InstallEvents();
    Windows().AddFrame(*this);
    LayOut();
}

FrameWindow::~FrameWindow() {
    FinishDrag();
    if (isVisible()) focus_.PassOn();
    Windows().RemoveFrame(*this);
}

void FrameWindow::SetMenuBar(QMenuBar* menuBar) {
    if (!menuBar || menuBar_) return;
    menuBar_ = menuBar;
    menuBar_->setNativeMenuBar(false);
    menuBar_->setParent(this);
    menuBar_->setCursor(Qt::ArrowCursor);
    menuBar_->show();
    LayOut();
}

FrameShape FrameWindow::Shape() const {
    if (fullScreen_) return {size(), 0, false};
    return {size(), kCaptionHeight + (menuBar_ ? menuBar_->sizeHint().height() : 0), !maximised_};
}

QSize FrameWindow::ExtraFor(const FrameShape& shape) const {
    const EdgeRect client = ClientRect(shape);
    return shape.size - QSize(int(client.Width()), int(client.Height()));
}

QSize FrameWindow::FrameExtra() const {
    return ExtraFor(Shape());
}

QSize FrameWindow::SmallestFrame() const {
    FrameShape shape = Shape();
    shape.sizable = true;
    const QSize smallest = minimumClient_ + ExtraFor(shape);
    return smallest.expandedTo({caption_->SmallestWidth() + 2 * kSizingBorder, 0});
}

void FrameWindow::SetMinimumClientSize(const QSize& client) {
    minimumClient_ = client.expandedTo({0, 0});
    LayOut();
}

void FrameWindow::ResizeClient(const QSize& client) {
    FrameShape shape = Shape();
    shape.sizable = true;
    const QSize frame = client.expandedTo({1, 1}) + ExtraFor(shape);
    if (!IsPlain()) {
        normal_.right = Saturate(int64_t{normal_.left} + frame.width());
        normal_.bottom = Saturate(int64_t{normal_.top} + frame.height());
        if (maximised_) return;
    }
    resize(frame);
    LayOut();
    NotePlace();
}

void FrameWindow::SetFrameRect(const EdgeRect& rect) {
    SetFullScreen(false);
    const int64_t farthest = int64_t(kFarthest / std::max(1.0, devicePixelRatioF()));
    const int left = int(std::clamp<int64_t>(rect.left, -farthest, farthest));
    const int top = int(std::clamp<int64_t>(rect.top, -farthest, farthest));
    const EdgeRect placeable{left, top, left + int(std::clamp<int64_t>(rect.Width(), 1, farthest)),
                             top + int(std::clamp<int64_t>(rect.Height(), 1, farthest))};
    if (!IsPlain()) normal_ = placeable;
    if (maximised_) {
        SetMaximised(false);
        return;
    }
    setGeometry(ToQRect(placeable));
    LayOut();
    NotePlace();
}

bool FrameWindow::IsSettled() const {
    return place_->IsSettled();
}

void FrameWindow::LayOut() {
    if (!client_) return;
    setMinimumSize(SmallestFrame());  // the window manager has ways of its own to size windows
    const FrameShape shape = Shape();
    const int border = shape.sizable ? kSizingBorder : 0;
    // The caption leaves the border free at the top as well, so that all sizing is the frame's own business.
    const int inner = width() - 2 * border;
    caption_->setGeometry(border, border, inner, kCaptionHeight - border);
    if (menuBar_) menuBar_->setGeometry(border, kCaptionHeight, inner, shape.captionHeight - kCaptionHeight);
    client_->setGeometry(ToQRect(ClientRect(shape)));
}

// Events that the window system sends are reports, others tell what it has been asked for.
void FrameWindow::moveEvent(QMoveEvent* event) {
    if (!event->spontaneous()) place_->NoteAsked();
    NotePlace();
}

void FrameWindow::resizeEvent(QResizeEvent* event) {
    if (!event->spontaneous()) place_->NoteAsked();
    LayOut();
    NotePlace();
}

bool FrameWindow::event(QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Hide || type == QEvent::Close || type == QEvent::WindowBlocked) FinishDrag();
    const QPointer<FrameWindow> self(this);
    const bool handled = QWidget::event(event);
    if (!self) return handled;
    switch (type) {
        case QEvent::Close:
            if (!event->isAccepted()) break;
            Windows().NoteClosed(*this);
            Q_EMIT Closed();
            break;
        case QEvent::Show:
            caption_->SetCanMinimise(HasWindowManager());
            focus_.NoteShown();
            break;
        case QEvent::Hide:
            focus_.PassOn();
            break;
        case QEvent::LayoutRequest:  // the menu bar's height may have changed
            LayOut();
            break;
        default:
            break;
    }
    return handled;
}

void FrameWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (!client_) return;
    switch (event->type()) {
        case QEvent::ActivationChange:
            focus_.NoteActivation();
            caption_->SetActive(isActiveWindow());
            if (isActiveWindow()) caption_->SetCanMinimise(HasWindowManager());
            update();
            break;
        case QEvent::WindowStateChange:
            FollowWindowManager();
            break;
        case QEvent::FontChange:
        case QEvent::StyleChange:
            LayOut();
            break;
        case QEvent::PaletteChange:
            update();
            break;
        default:
            break;
    }
}

void FrameWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const FrameShape shape = Shape();
    const QColor colour = isActiveWindow() ? Theme().activeFrame : Theme().inactiveFrame;
    painter.fillRect(0, 0, width(), shape.captionHeight, colour);
    for (const EdgeRect& strip : BorderStrips(shape))
        painter.fillRect(ToQRect(strip), colour);
    if (kind_ == Kind::FixedDialog) return;
    for (const GripPart& part : GripParts(shape))
        painter.fillRect(ToQRect(part.rect), part.outline ? QColor(Qt::black) : ThreeQuarters(colour));
}

}  // namespace pixelgrove
