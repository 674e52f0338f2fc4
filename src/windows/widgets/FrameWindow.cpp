#include "windows/widgets/FrameWindow.h"

#include <QApplication>
#include <QMenuBar>
#include <QMoveEvent>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "look/widgets/Theme.h"
#include "windows/widgets/CaptionBar.h"
#include "windows/widgets/ManagerDrag.h"
#include "windows/widgets/ManagerStates.h"
#include "windows/widgets/PlaceWatch.h"
#include "windows/widgets/ScreenAreas.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

constexpr int kShowNormal = 1;
constexpr int kShowMinimised = 2;
constexpr int kShowMaximised = 3;

// What the window manager does to a window by itself it does within this time. A place that was taken up
// shortly before it maximised the window is its doing: it tells the new geometry before it tells the reason.
constexpr int kSettleMs = 500;

constexpr int kFarthest = 32000;  // device pixels; X11 counts with 16 bits

Qt::WindowFlags FlagsOf(FrameWindow::Kind kind) {
    return (kind == FrameWindow::Kind::Window ? Qt::Window : Qt::Dialog) | Qt::FramelessWindowHint;
}

QColor ThreeQuarters(const QColor& colour) {
    return {colour.red() * 3 / 4, colour.green() * 3 / 4, colour.blue() * 3 / 4};
}

}  // namespace

FrameWindow::FrameWindow(Kind kind, QWidget* owner) : QWidget(owner, FlagsOf(kind)), kind_(kind) {
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
    if (isVisible()) PassActivationOn();
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

// Neither the window manager nor we made something of the window that has another place than its own.
bool FrameWindow::IsPlain() const {
    return !IsMaximised() &&
           !(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
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

EdgeRect FrameWindow::NormalRect() const {
    return IsPlain() ? FrameRect() : normal_;
}

WindowPlacement FrameWindow::Placement() const {
    WindowPlacement placement;
    placement.length = WindowPlacement::kLength;
    placement.showCommand = isMinimized() ? kShowMinimised : maximised_ ? kShowMaximised : kShowNormal;
    placement.normal = NormalRect();
    return placement;
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

void FrameWindow::NotePlace() {
    // A window manager that tiles windows gives them another place.
    if (maximised_ && !byManager_ && !fullScreen_ && FrameRect() != laidOver_) {
        ChangeMaximised(false);
        LayOut();
        update();
    }
    if (IsPlain() && normal_ != FrameRect()) {
        if (!sinceMove_.isValid() || sinceMove_.elapsed() > kSettleMs) settledNormal_ = normal_;
        sinceMove_.start();
        normal_ = FrameRect();
    }
    Windows().NoteMoved(*this);
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

void FrameWindow::ChangeMaximised(bool maximised) {
    maximised_ = maximised;
    caption_->SetMaximised(maximised);
    setCursor(Qt::ArrowCursor);
}

void FrameWindow::SetMaximised(bool maximised) {
    if (maximised == maximised_ || (!maximised && restoring_)) return;
    FinishDrag();
    if (maximised && isVisible() && ManagerMaximises()) {
        placeBefore_ = NormalRect();
        AskForMaximised(*this, true);  // FollowWindowManager hears of it
        return;
    }
    if (!maximised && byManager_) {
        restoring_ = true;
        if (windowState() & Qt::WindowFullScreen)
            setWindowState(windowState() & ~Qt::WindowFullScreen);
        else
            AskForMaximised(*this, false);
        return;
    }
    if (maximised) normal_ = NormalRect();
    ChangeMaximised(maximised);
    laidOver_ = maximised ? WorkAreaAround(normal_, screen()) : normal_;
    if (!laidOver_.IsEmpty()) setGeometry(ToQRect(laidOver_));
    LayOut();
    update();
    NotePlace();
}

void FrameWindow::ChangeFullScreen(bool fullScreen) {
    fullScreen_ = fullScreen;
    caption_->setVisible(!fullScreen);
    if (menuBar_) menuBar_->setVisible(!fullScreen);
}

void FrameWindow::SetFullScreen(bool fullScreen) {
    if (fullScreen == fullScreen_) return;
    FinishDrag();
    asksFullScreen_ = fullScreen;
    if (fullScreen) normal_ = NormalRect();
    ChangeFullScreen(fullScreen);
    setWindowState(windowState().setFlag(Qt::WindowFullScreen, fullScreen));
    // Nobody else does.
    if (!HasWindowManager()) setGeometry(fullScreen ? screen()->geometry() : ToQRect(normal_));
    LayOut();
    update();
    NotePlace();
}

// The window manager has keys and menus of its own for the state of windows.
void FrameWindow::FollowWindowManager() {
    // A state from before the question may be told after it, so what was asked for is not given up for that.
    const bool fullScreen = asksFullScreen_ && isFullScreen();
    if (fullScreen != fullScreen_) ChangeFullScreen(fullScreen);
    const bool maximised =
        windowState() & (fullScreen_ ? Qt::WindowMaximized : Qt::WindowMaximized | Qt::WindowFullScreen);
    const std::optional<EdgeRect> placeBefore = std::exchange(placeBefore_, std::nullopt);
    const bool restoring = std::exchange(restoring_, false);
    if (maximised && !maximised_) {
        FinishDrag();
        const bool coversScreen = Contains(FrameRect(), WorkAreaAround(FrameRect(), screen()));
        if (placeBefore)
            normal_ = *placeBefore;
        else if (coversScreen && normal_ == FrameRect() && sinceMove_.isValid() &&
                 sinceMove_.elapsed() <= kSettleMs && !settledNormal_.IsEmpty())
            normal_ = settledNormal_;
        byManager_ = true;
        ChangeMaximised(true);
    } else if (!maximised && byManager_) {
        byManager_ = false;
        ChangeMaximised(false);
        if (restoring) setGeometry(ToQRect(normal_));  // the manager may remember another place
    }
    LayOut();
    update();
    NotePlace();
}

void FrameWindow::LeaveFocusTo(QWidget& other) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    keepsFocus_ = &other;
}

void FrameWindow::Minimise() {
    if (!HasWindowManager()) return;
    AskForMinimised(*this);
}

// Where no window manager does it, nobody else gives windows the focus, nor keeps dialogs above their owner.
void FrameWindow::ActivateAlone() {
    if (HasWindowManager()) return;
    raise();
    for (FrameWindow* dialog : findChildren<FrameWindow*>(Qt::FindDirectChildrenOnly))
        if (dialog->isVisible()) dialog->raise();
    activateWindow();
}

// And nobody passes it on when its window goes. A window that is being hidden is not the active one any more,
// so all that can be known is that no other one is.
void FrameWindow::PassActivationOn() {
    const QWidget* active = QApplication::activeWindow();
    if ((active && active != this) || HasWindowManager()) return;
    QWidget* next = parentWidget() ? parentWidget()->window() : nullptr;
    if (!next || !next->isVisible()) {
        next = nullptr;
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other != this && other->isVisible() && qobject_cast<FrameWindow*>(other)) next = other;
    }
    if (next) next->activateWindow();
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
            if (testAttribute(Qt::WA_ShowWithoutActivating)) {
                sinceQuietShow_.start();
                QMetaObject::invokeMethod(  // it is shown behind this event
                    this, [this] { WithdrawAttention(*this); }, Qt::QueuedConnection);
            } else {
                ActivateAlone();
            }
            break;
        case QEvent::Hide:
            PassActivationOn();
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
            // Not every window manager heeds that a window was to be shown without the focus.
            if (isActiveWindow() && keepsFocus_ && sinceQuietShow_.isValid() &&
                sinceQuietShow_.elapsed() <= kSettleMs)
                keepsFocus_->activateWindow();
            if (isActiveWindow()) sinceQuietShow_.invalidate();
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
