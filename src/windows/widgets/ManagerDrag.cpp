#include "windows/widgets/ManagerDrag.h"

#include <QWidget>
#include <utility>

#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

// How often the button, whose release the window manager keeps to itself, and the window are looked at.
constexpr int kLookMs = 40;

}  // namespace

ManagerDrag::ManagerDrag(QWidget* frame) : QObject(frame), frame_(frame) {
    watch_.setInterval(kLookMs);
    connect(&watch_, &QTimer::timeout, this, &ManagerDrag::Look);
}

bool ManagerDrag::Start(FrameZone zone, const QPoint& from) {
    if (!StartManagerDrag(*frame_, EdgesOf(zone), from)) return false;
    lastSeen_ = frame_->geometry();
    atStart_ = lastSeen_;
    quietLooks_ = 0;
    watch_.start();
    return true;
}

void ManagerDrag::Cancel() {
    watch_.stop();
    CancelManagerDrag(*frame_);
}

bool ManagerDrag::HasMoved() const {
    return atStart_ && frame_->geometry() != *atStart_;
}

void ManagerDrag::Forget() {
    watch_.stop();
    atStart_.reset();
}

// The button alone isn't enough: the manager may still have the last moves of the pointer before it. Some
// report a window's place only at the end of a drag, so the server is asked.
void ManagerDrag::Look() {
    const QRect before = std::exchange(lastSeen_, frame_->geometry());
    quietLooks_ = IsLeftButtonDown() || before != lastSeen_ ? 0 : quietLooks_ + 1;
    if (quietLooks_ < 2) {
        InquireReport(*frame_);
        return;
    }
    watch_.stop();
    Q_EMIT Ended();
}

}  // namespace pixelgrove
