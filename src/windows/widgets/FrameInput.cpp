// What the user does to a frame: drags by caption and border, the window menu, and the keys.
#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "windows/widgets/CaptionBar.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/ManagerDrag.h"
#include "windows/widgets/PlaceWatch.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

// Pixels that a maximised window's caption is pulled before the window comes off its place.
constexpr int kPullOff = 6;

// Pixels that a drag goes before the window manager may have it. A double click comes before.
constexpr int kHandOver = 3;

int Length(const QPoint& way) {
    return std::max(std::abs(way.x()), std::abs(way.y()));
}

Qt::CursorShape CursorOf(FrameZone zone) {
    switch (zone) {
        case FrameZone::Left:
        case FrameZone::Right:
            return Qt::SizeHorCursor;
        case FrameZone::Top:
        case FrameZone::Bottom:
            return Qt::SizeVerCursor;
        case FrameZone::TopLeft:
        case FrameZone::BottomRight:
            return Qt::SizeFDiagCursor;
        case FrameZone::TopRight:
        case FrameZone::BottomLeft:
            return Qt::SizeBDiagCursor;
        default:
            return Qt::ArrowCursor;
    }
}

// A letter with Alt that no menu has taken: a text would take it as if Alt weren't down. The third level of a
// layout comes without Alt, whatever the key is that chooses it.
bool IsAltText(const QObject& receiver, const QKeyEvent& key) {
    if (!key.modifiers().testFlag(Qt::AltModifier) || key.text().isEmpty() || !key.text().front().isPrint())
        return false;
    return receiver.isWidgetType() &&
           static_cast<const QWidget&>(receiver).testAttribute(Qt::WA_InputMethodEnabled);
}

}  // namespace

// One for all frames, on the application: a frame has to know of a press or a key even when one of its
// children, or a window embedded in it, takes it.
class FrameEvents : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress) {
            FrameWindow* frame = FrameOf(watched);
            if (frame && !frame->isActiveWindow()) frame->focus_.TakeAlone();
        } else if (event->type() == QEvent::KeyPress) {
            FrameWindow* frame = FrameOf(watched);
            const auto& key = *static_cast<const QKeyEvent*>(event);
            return frame && (frame->TakeKey(key) || IsAltText(*watched, key));
        }
        return false;
    }

  private:
    static FrameWindow* FrameOf(QObject* receiver) {
        QWidget* widget = nullptr;
        if (receiver->isWidgetType()) {
            widget = static_cast<QWidget*>(receiver);
        } else if (receiver->isWindowType()) {
            auto* window = static_cast<QWindow*>(receiver);
            while (QWindow* parent = window->parent())
                window = parent;
            if (window->handle()) widget = QWidget::find(window->winId());
        }
        return widget ? qobject_cast<FrameWindow*>(widget->window()) : nullptr;
    }
};

void FrameWindow::InstallEvents() {
    static QPointer<FrameEvents> installed;
    if (installed) return;
    installed = new FrameEvents(qApp);
    qApp->installEventFilter(installed);
    WatchReports([](QWidget& window) {
        if (auto* frame = qobject_cast<FrameWindow*>(&window)) frame->place_->NoteReport();
    });
}

FrameZone FrameWindow::ZoneOf(const QMouseEvent& event) const {
    FrameShape shape = Shape();
    if (kind_ == Kind::FixedDialog) shape.sizable = false;
    // Down, not to the nearest: on a scaled screen the last half pixel of the border is border too.
    return ZoneAt(shape, {int(std::floor(event.position().x())), int(std::floor(event.position().y()))});
}

void FrameWindow::mousePressEvent(QMouseEvent* event) {
    const FrameZone zone = ZoneOf(*event);
    if (event->button() != Qt::LeftButton) return;
    FinishDrag();  // of which the release went to somebody else
    if (zone == FrameZone::Client || zone == FrameZone::Outside) return;
    if (HasWindowManager()) {
        raise();
        activateWindow();
    } else {
        focus_.TakeAlone();
    }
    dragZone_ = zone;
    pressedAt_ = event->globalPosition().toPoint();
    rectAtPress_ = FrameRect();
    ShowZoneCursor(zone);
    if (!maximised_) BeginDrag();
}

void FrameWindow::mouseMoveEvent(QMouseEvent* event) {
    if (dragZone_ == FrameZone::Outside) {
        ShowZoneCursor(ZoneOf(*event));
        return;
    }
    // The release may have gone to somebody else, as to a menu that opened meanwhile.
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        managerDrag_->IsActive() ? EndManagerDrag() : FinishDrag();
        return;
    }
    // It takes the pointer soon. If it is too late for that, the rest is done at the release.
    if (managerDrag_->IsActive()) {
        heldBack_ = ProposedBy(event->globalPosition().toPoint());
        return;
    }
    // While the window goes with the pointer, what its events say is measured from places that it has left
    // since. With the button up the pointer may have gone on already, and the event is the better witness.
    const QPoint now = QCursor::pos();
    const bool isDown = IsLeftButtonDown();
    const QPoint pointer = isDown ? now : event->globalPosition().toPoint();
    if (!dragBegun_) {
        if (Length(pointer - pressedAt_) <= kPullOff) return;
        RestoreUnder(pointer);
    }
    const QPoint way = pointer - pressedAt_;
    const EdgeRect proposed = ProposedBy(pointer);
    const bool leftShift = IsLeftShiftDown();
    const bool isPlain = IsXwayland() || Windows().IsPlainDrag(*this, dragZone_, leftShift);
    if (isDown && managerTakesIt_ && isPlain && !maximised_ && place_->IsSettled()) {
        if (FrameRect() == rectAtPress_ && Length(way) <= kHandOver) {
            heldBack_ = proposed;
            return;
        }
        if (HandOver(pointer)) return;
    }
    heldBack_.reset();
    Windows().DragTo(*this, dragZone_, proposed, leftShift);
}

void FrameWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        if (managerDrag_->IsActive()) {
            managerDrag_->Cancel();
            heldBack_ = ProposedBy(event->globalPosition().toPoint());
        }
        DoHeldBack();
        FinishDrag();
    } else if (event->button() == Qt::RightButton && dragZone_ == FrameZone::Outside &&
               ZoneOf(*event) == FrameZone::Caption) {
        ShowWindowMenu(event->globalPosition().toPoint());
    }
}

void FrameWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    if (kind_ == Kind::Window && ZoneOf(*event) == FrameZone::Caption)
        SetMaximised(!maximised_);
    else
        mousePressEvent(event);  // a quick second drag
}

void FrameWindow::BeginDrag() {
    dragBegun_ = true;
    managerTakesIt_ = ManagerTakesDrags();
    Windows().BeginDrag(*this, IsLeftShiftDown());
}

// The window gets its normal size and the pointer keeps its place in the caption: its height, and its part of
// the width. The drag begins from there.
void FrameWindow::RestoreUnder(const QPoint& pointer) {
    const FrameZone zone = dragZone_;
    const QPoint inFrame = pressedAt_ - QPoint(rectAtPress_.left, rectAtPress_.top);
    const double part = double(inFrame.x()) / double(std::max<int64_t>(1, rectAtPress_.Width()));
    const int left = pointer.x() - RoundToInt(part * double(normal_.Width()));
    normal_ = Offset(normal_, int64_t{left} - normal_.left, int64_t{pointer.y()} - inFrame.y() - normal_.top);
    SetMaximised(false);  // which ends what it takes for a drag
    dragZone_ = zone;
    pressedAt_ = pointer;
    rectAtPress_ = normal_;
    BeginDrag();
}

EdgeRect FrameWindow::ProposedBy(const QPoint& pointer) const {
    return DragRect(rectAtPress_, dragZone_, pointer - pressedAt_, SmallestFrame());
}

// From here on the pointer is the window manager's. The window may have gone a part of the way since the
// press.
bool FrameWindow::HandOver(const QPoint& pointer) {
    const EdgeRect rect = FrameRect();
    QPoint from = pressedAt_ + QPoint(rect.left - rectAtPress_.left, rect.top - rectAtPress_.top);
    if (dragZone_ != FrameZone::Caption && rect != rectAtPress_) from = pointer;
    managerTakesIt_ = managerDrag_->Start(dragZone_, from);
    if (!managerTakesIt_) return false;
    heldBack_ = ProposedBy(pointer);
    place_->Forget();
    Windows().LeaveDragToManager(*this, dragZone_);
    return true;
}

// What was left to the window manager, and it did nothing of it: the release came too early.
void FrameWindow::DoHeldBack() {
    if (managerDrag_->HasMoved()) heldBack_.reset();
    if (heldBack_) Windows().DragTo(*this, dragZone_, *heldBack_, IsLeftShiftDown());
}

void FrameWindow::EndManagerDrag() {
    DoHeldBack();
    FinishDrag();
    // Nobody has told the toolkit that the button is up, and it would give all moves to this window.
    const QPoint pointer = QCursor::pos();
    QMouseEvent release(QEvent::MouseButtonRelease, mapFromGlobal(QPointF(pointer)), QPointF(pointer),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    if (windowHandle()) QCoreApplication::sendEvent(windowHandle(), &release);
}

void FrameWindow::TakeSettled(bool refused) {
    Windows().NoteSettled();
    // A window manager that lets no program place its windows may still move them for the user.
    if (refused && dragBegun_ && managerTakesIt_ && !managerDrag_->IsActive() &&
        FrameRect() == rectAtPress_ && IsLeftButtonDown())
        HandOver(QCursor::pos());
}

void FrameWindow::FinishDrag() {
    dragZone_ = FrameZone::Outside;
    heldBack_.reset();
    managerDrag_->Forget();
    if (std::exchange(dragBegun_, false)) Windows().EndDrag(*this);
}

void FrameWindow::ShowZoneCursor(FrameZone zone) {
    if (cursor().shape() != CursorOf(zone)) setCursor(CursorOf(zone));
}

std::unique_ptr<QMenu> FrameWindow::MakeWindowMenu() {
    auto menu = std::make_unique<QMenu>();
    menu->setObjectName(QStringLiteral("windowMenu"));
    if (kind_ == Kind::Window) {
        QAction* restore = menu->addAction(tr("&Restore"), this, [this] {
            if (isMinimized())
                setWindowState(windowState() & ~Qt::WindowMinimized);
            else
                SetMaximised(false);
        });
        restore->setEnabled(maximised_ || isMinimized());
        menu->addAction(tr("Mi&nimise"), this, &FrameWindow::Minimise)
            ->setEnabled(!isMinimized() && HasWindowManager());
        menu->addAction(tr("Ma&ximise"), this, [this] { SetMaximised(true); })->setEnabled(!maximised_);
        menu->addSeparator();
    }
    // Shown only: the key is taken before any menu sees it.
    menu->addAction(tr("&Close") + QStringLiteral("\tAlt+F4"), this, &QWidget::close);
    return menu;
}

void FrameWindow::ShowWindowMenu(const QPoint& globalPosition) {
    FinishDrag();
    QMenu* menu = MakeWindowMenu().release();
    menu->setParent(this, menu->windowFlags());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalPosition);
}

// True when the key is the frame's. The window may be gone then.
bool FrameWindow::TakeKey(const QKeyEvent& event) {
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::AltModifier) return false;
    if (event.key() == Qt::Key_F4) {
        if (!event.isAutoRepeat()) close();  // a key held down is to close one window, not all
        return true;
    }
    if (event.key() == Qt::Key_Space) {
        if (!event.isAutoRepeat()) ShowWindowMenu(mapToGlobal(QPoint(kSizingBorder, kCaptionHeight)));
        return true;
    }
    return false;
}

}  // namespace pixelgrove
