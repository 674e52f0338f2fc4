#include "windows/widgets/PlaceWatch.h"

#include <QCoreApplication>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QWidget>
#include <QWindow>

#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

// A window manager that has told nothing new of a window for this long isn't going to.
constexpr int kAnswerMs = 300;

}  // namespace

PlaceWatch::PlaceWatch(QWidget* frame) : QObject(frame), frame_(frame) {
    patience_.setSingleShot(true);
    patience_.setInterval(kAnswerMs);
    connect(&patience_, &QTimer::timeout, this, &PlaceWatch::LosePatience);
}

void PlaceWatch::NoteAsked() {
    if (taking_ || !frame_->isVisible() || !frame_->windowHandle()) return;
    asked_ = frame_->geometry();
    inquired_ = false;
    if (patience_.isActive()) return;
    reportedBefore_ = reported_;
    patience_.start();
}

void PlaceWatch::Forget() {
    patience_.stop();
    inquired_ = false;
}

void PlaceWatch::NoteReport() {
    QWindow* window = frame_->windowHandle();
    if (!window) return;
    reported_ = window->geometry();
    taking_ = true;
    // The frame hears of reports by these events, but the toolkit sends them only when the report differs
    // from the last one.
    if (reported_.topLeft() != frame_->geometry().topLeft()) {
        QMoveEvent moved(reported_.topLeft(), frame_->geometry().topLeft());
        QCoreApplication::sendEvent(window, &moved);
    }
    if (reported_.size() != frame_->size()) {
        QResizeEvent resized(reported_.size(), frame_->size());
        QCoreApplication::sendEvent(window, &resized);
    }
    taking_ = false;
    if (!IsSettled() && (inquired_ || reported_ == asked_)) Finish();
}

void PlaceWatch::LosePatience() {
    // It is slow, but it does something.
    if (reported_ != reportedBefore_) {
        reportedBefore_ = reported_;
        patience_.start();
        return;
    }
    if (!inquired_ && frame_->isVisible() && InquireReport(*frame_)) {
        inquired_ = true;
        patience_.start();
        return;
    }
    Finish();
}

void PlaceWatch::Finish() {
    Forget();
    Q_EMIT Settled(frame_->geometry() != asked_);
}

}  // namespace pixelgrove
