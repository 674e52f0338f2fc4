#include "ui/PostedWork.h"

#include <QScopedValueRollback>
#include <optional>

#include "ui/MessagePane.h"

namespace pixelgrove {

PostedWork::PostedWork(QObject& receiver, MessagePane& pane) : commands_(&receiver), pane_(pane) {
    pane.sayWaiting = [this] { SayNewest(); };
}

void PostedWork::PostStatus(const QString& text) {
    Hold(texts_)->push_back(text);
    PostCommand(kCmdStatus, 0);
}

void PostedWork::DoOldest(const std::function<void(int commandId)>& run) {
    const std::optional<PostedCommand> command = commands_.Take();
    if (!command) return;
    const QScopedValueRollback isPosted(doesPosted_, true);
    if (command->id == kCmdStatus)
        SayOldest();
    else
        run(command->id);
}

void PostedWork::SayOldest() {
    QString text;
    {
        const Hold waiting(texts_);
        if (waiting->empty()) return;
        text = waiting->front();
        waiting->pop_front();
    }
    pane_.Say(text);
}

// What is said now is newer than all that waits, and what a posted command says as old as its post.
void PostedWork::SayNewest() {
    if (doesPosted_) return;
    const QScopedValueRollback isPosted(doesPosted_, true);
    commands_.CancelPostedCommand(kCmdStatus);
    const std::deque<QString> waiting = texts_.Exchange({});
    if (!waiting.empty()) pane_.Say(waiting.back());
}

}  // namespace pixelgrove
