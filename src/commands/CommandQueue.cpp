#include "commands/CommandQueue.h"

#include <QCoreApplication>

namespace pixelgrove {

QEvent::Type CommandQueue::EventType() {
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

void CommandQueue::PostCommand(int commandId, intptr_t data) {
    {
        std::lock_guard lock(lock_);
        waiting_.push_back({commandId, data});
    }
    QCoreApplication::postEvent(receiver_, new QEvent(EventType()));
}

void CommandQueue::CancelPostedCommand(int commandId) {
    std::lock_guard lock(lock_);
    std::erase_if(waiting_, [commandId](const PostedCommand& command) { return command.id == commandId; });
}

std::optional<PostedCommand> CommandQueue::Take() {
    std::lock_guard lock(lock_);
    if (waiting_.empty()) return std::nullopt;
    const PostedCommand command = waiting_.front();
    waiting_.pop_front();
    return command;
}

}  // namespace pixelgrove
