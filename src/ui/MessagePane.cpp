#include "ui/MessagePane.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextDocument>
#include <utility>

namespace pixelgrove {

void MessagePane::Say(const QString& text) {
    if (sayWaiting) sayWaiting();
    messages_.clear();
    view_.setPlainText(text);
}

void MessagePane::Show(CompileMessages messages, const QString& end) {
    QString text = TextOf(messages);
    text.chop(1);
    Say(text + end);
    messages_ = std::move(messages);
}

const CompileMessage* MessagePane::MessageAt(const QPoint& at) const {
    const int block = view_.cursorForPosition(at).blockNumber();
    int next = 0;
    for (const CompileMessage& message : messages_) {
        // A file's name may hold what begins a block in the view.
        next += QTextDocument(message.text + u'\n').blockCount() - 1;
        if (block < next) return &message;
    }
    return nullptr;
}

void MessagePane::Add(const QString& text) {
    if (text.isEmpty()) return;
    if (sayWaiting) sayWaiting();
    view_.appendPlainText(text);
    view_.verticalScrollBar()->setValue(view_.verticalScrollBar()->maximum());
}

QString MessagePane::Text() const {
    return view_.toPlainText();
}

}  // namespace pixelgrove
