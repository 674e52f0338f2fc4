#include "windows/widgets/Dialogs.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

QRect MovedInto(QRect rect, const QRect& area) {
    rect.moveRight(std::min(rect.right(), area.right()));
    rect.moveBottom(std::min(rect.bottom(), area.bottom()));
    rect.moveLeft(std::max(rect.left(), area.left()));
    rect.moveTop(std::max(rect.top(), area.top()));
    return rect;
}

QRect PlaceOver(const QWidget* owner, const QSize& size) {
    const QWidget* window = owner ? owner->window() : nullptr;
    if (window && (!window->isVisible() || window->isMinimized())) window = nullptr;
    const QScreen* screen = window ? window->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(QPoint(), size);
    QRect rect(QPoint(), size);
    rect.moveCenter((window ? window->frameGeometry() : area).center());
    return MovedInto(rect, area);
}

FrameDialog::FrameDialog(QWidget* owner, Kind kind) : FrameWindow(kind, owner ? owner->window() : nullptr) {
    setWindowModality(Qt::ApplicationModal);
}

bool FrameDialog::Exec() {
    if (loop_) return false;
    QEventLoop loop;
    loop_ = &loop;
    accepted_ = false;
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    const QPointer<FrameDialog> self = this;
    SetFrameRect(FromQRect(PlaceOver(parentWidget(), size())));
    if (registryName_.isEmpty())
        show();
    else
        Windows().Present(*this, registryName_);
    raise();
    activateWindow();
    loop.exec();
    if (!self) return false;
    loop_ = nullptr;
    hide();
    if (!registryName_.isEmpty()) Windows().NoteClosed(*this);
    // Not every window manager gives the focus back by itself.
    if (QWidget* owner = parentWidget(); owner && owner->isVisible()) owner->activateWindow();
    return accepted_;
}

void FrameDialog::Done(bool accepted) {
    accepted_ = accepted;
    hide();
    if (loop_) loop_->quit();
}

void FrameDialog::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        Done(false);
    else if (!TakeDialogKey(*this, *event))
        FrameWindow::keyPressEvent(event);
}

void FrameDialog::closeEvent(QCloseEvent* event) {
    FrameWindow::closeEvent(event);
    if (event->isAccepted()) Done(false);
}

bool TakeDialogKey(QWidget& window, const QKeyEvent& key) {
    if (key.matches(QKeySequence::Cancel)) {
        window.close();
        return true;
    }
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!enter || (key.modifiers() & ~Qt::KeypadModifier)) return false;
    auto* button = qobject_cast<QPushButton*>(window.focusWidget());
    if (!button)
        for (QPushButton* candidate : window.findChildren<QPushButton*>())
            if (candidate->isDefault() && candidate->isVisible()) button = candidate;
    if (button) button->click();
    return button != nullptr;
}

bool ExecOnce(FrameDialog* dialog, const std::function<void()>& whenAccepted) {
    const QPointer<FrameDialog> alive = dialog;
    const bool accepted = dialog->Exec();
    if (accepted) whenAccepted();
    delete alive;
    return accepted;
}

}  // namespace pixelgrove
