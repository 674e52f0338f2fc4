// What the user does to a frame: drags by caption and border, the window menu, and the keys.
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "windows/widgets/CaptionBar.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

// Pixels that a maximised window's caption is pulled before the window comes off its place.
constexpr int kPullOff = 6;

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
            if (frame && !frame->isActiveWindow()) frame->ActivateAlone();
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
        ActivateAlone();
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
        FinishDrag();
        return;
    }
    const QPoint pointer = event->globalPosition().toPoint();
    if (!dragBegun_) {
        const QPoint way = pointer - pressedAt_;
        if (std::max(std::abs(way.x()), std::abs(way.y())) <= kPullOff) return;
        RestoreUnder(pointer);
    }
    Windows().DragTo(*this, dragZone_,
                     DragRect(rectAtPress_, dragZone_, pointer - pressedAt_, SmallestFrame()),
                     IsLeftShiftDown());
}

void FrameWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
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

void FrameWindow::FinishDrag() {
    dragZone_ = FrameZone::Outside;
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
