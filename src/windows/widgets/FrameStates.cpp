// What a frame is: plain, maximised, minimised or in full screen, and the place that it has when it is plain.
#include <QMenuBar>
#include <QScreen>
#include <utility>

#include "windows/widgets/CaptionBar.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/ManagerStates.h"
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

}  // namespace

// Neither the window manager nor we made something of the window that has another place than its own.
bool FrameWindow::IsPlain() const {
    return !IsMaximised() &&
           !(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
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

void FrameWindow::Minimise() {
    if (!HasWindowManager()) return;
    AskForMinimised(*this);
}

}  // namespace pixelgrove
