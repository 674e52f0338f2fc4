#include "commands/CommandQueue.h"

#include <QCoreApplication>

namespace pixelgrove {

QEvent::Type CommandQueue::EventType() {
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

void CommandQueue::PostCommand(int commandId, intptr_t data) {
    Hold(waiting_)->push_back({commandId, data});
    QCoreApplication::postEvent(receiver_, new QEvent(EventType()));
}

void CommandQueue::CancelPostedCommand(int commandId) {
    const Hold waiting(waiting_);
    std::erase_if(*waiting, [commandId](const PostedCommand& command) { return command.id == commandId; });
}

void CommandQueue::Postpone(bool isPostponed) {
    if (isPostponed == isPostponed_) return;
    isPostponed_ = isPostponed;
    if (isPostponed) return;
    // Their own events may have passed meanwhile; one too many finds nothing.
    const size_t count = Hold(waiting_)->size();
    for (size_t i = 0; i < count; ++i)
        QCoreApplication::postEvent(receiver_, new QEvent(EventType()));
}

std::optional<PostedCommand> CommandQueue::Take() {
    if (isPostponed_) return std::nullopt;
    const Hold waiting(waiting_);
    if (waiting->empty()) return std::nullopt;
    const PostedCommand command = waiting->front();
    waiting->pop_front();
    return command;
}

}  // namespace pixelgrove
