// CommandQueue: the road of posted commands into the main window.
//
// A command waits in a locked queue; a plain event, which carries no data, tells the receiver that one is
// there. So a command that was posted can be dropped again until the moment it is taken.
#pragma once

#include <QEvent>
#include <QObject>
#include <cstdint>
#include <deque>
#include <optional>

#include "platform/SynchronizedValue.h"

namespace pixelgrove {

struct PostedCommand {
    int id = 0;
    intptr_t data = 0;
};

class CommandQueue {
  public:
    // The receiver must outlive the last PostCommand; it gets one event of EventType() for each command.
    explicit CommandQueue(QObject* receiver) : receiver_(receiver) {}

    static QEvent::Type EventType();

    // Any thread; returns at once.
    void PostCommand(int commandId, intptr_t data);
    // Drops every waiting command of this id. Main thread.
    void CancelPostedCommand(int commandId);
    // Keeps commands waiting from true to false: for an event loop inside a command, which must not find that
    // another has run. Main thread.
    void Postpone(bool isPostponed);
    // The oldest waiting command; nothing when it was dropped meanwhile or commands are postponed. Main
    // thread.
    std::optional<PostedCommand> Take();

  private:
    QObject* receiver_;
    bool isPostponed_ = false;
    SynchronizedValue<std::deque<PostedCommand>> waiting_;
};

}  // namespace pixelgrove
