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

std::optional<PostedCommand> CommandQueue::Take() {
    const Hold waiting(waiting_);
    if (waiting->empty()) return std::nullopt;
    const PostedCommand command = waiting->front();
    waiting->pop_front();
    return command;
}

}  // namespace pixelgrove
