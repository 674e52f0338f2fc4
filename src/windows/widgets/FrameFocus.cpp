#include "windows/widgets/FrameFocus.h"

#include <QApplication>

#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/ManagerStates.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

// A window manager that gives a new window the focus all the same does it within this time.
constexpr int kQuietMs = 500;

}  // namespace

void FrameFocus::LeaveTo(QWidget& other) {
    frame_.setAttribute(Qt::WA_ShowWithoutActivating);
    keeper_ = &other;
}

void FrameFocus::TakeAlone() {
    if (HasWindowManager()) return;
    frame_.raise();
    for (FrameWindow* dialog : frame_.findChildren<FrameWindow*>(Qt::FindDirectChildrenOnly))
        if (dialog->isVisible()) dialog->raise();
    frame_.activateWindow();
}

// A window that is being hidden is not the active one any more, so all that can be known is that no other one
// is.
void FrameFocus::PassOn() {
    const QWidget* active = QApplication::activeWindow();
    if ((active && active != &frame_) || HasWindowManager()) return;
    QWidget* next = frame_.parentWidget() ? frame_.parentWidget()->window() : nullptr;
    if (!next || !next->isVisible()) {
        next = nullptr;
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other != &frame_ && other->isVisible() && qobject_cast<FrameWindow*>(other)) next = other;
    }
    if (next) next->activateWindow();
}

void FrameFocus::NoteShown() {
    if (!frame_.testAttribute(Qt::WA_ShowWithoutActivating)) {
        TakeAlone();
        return;
    }
    sinceQuietShow_.start();
    QMetaObject::invokeMethod(  // it is shown behind this event
        &frame_, [&frame = frame_] { WithdrawAttention(frame); }, Qt::QueuedConnection);
}

void FrameFocus::NoteActivation() {
    if (!frame_.isActiveWindow()) return;
    // Not every window manager heeds that a window was to be shown without the focus.
    if (keeper_ && sinceQuietShow_.isValid() && sinceQuietShow_.elapsed() <= kQuietMs)
        keeper_->activateWindow();
    sinceQuietShow_.invalidate();
}

}  // namespace pixelgrove
