// PostedWork: what waits to be done by the main window: commands, and texts for the message pane, in the
// order of their posts.
//
// Owned by the main window.
#pragma once

#include <QString>
#include <cstdint>
#include <deque>
#include <functional>

#include "commands/CommandQueue.h"
#include "platform/SynchronizedValue.h"

namespace pixelgrove {

class MessagePane;

class PostedWork {
  public:
    // Both outlive this object. The receiver gets an event of CommandQueue::EventType() for each post, and
    // calls DoOldest then.
    PostedWork(QObject& receiver, MessagePane& pane);

    // Any thread; they return at once.
    void PostCommand(int commandId, intptr_t data) { commands_.PostCommand(commandId, data); }
    void PostStatus(const QString& text);

    // Main thread, as those of CommandQueue.
    void CancelCommand(int commandId) { commands_.CancelPostedCommand(commandId); }
    void Postpone(bool isPostponed) { commands_.Postpone(isPostponed); }

    // Says the text that was posted first of all that waits, or has that command run. Nothing where none
    // waits. Main thread.
    void DoOldest(const std::function<void(int commandId)>& run);

  private:
    static constexpr int kCmdStatus = -2;  // for each text one

    void SayOldest();
    void SayNewest();

    CommandQueue commands_;
    MessagePane& pane_;
    SynchronizedValue<std::deque<QString>> texts_;  // for each kCmdStatus its own
    bool doesPosted_ = false;
};

}  // namespace pixelgrove
