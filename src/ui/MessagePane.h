// MessagePane: what the program tells the user below the editor. Whoever has something to say calls it.
//
// Main thread; owned by the main window.
#pragma once

#include <QPoint>
#include <QString>
#include <functional>

#include "core/CompileMessage.h"

class QPlainTextEdit;

namespace pixelgrove {

class MessagePane {
  public:
    // The view outlives this object.
    explicit MessagePane(QPlainTextEdit& view) : view_(view) {}

    // Called before each change of what it says, with what was told earlier and waits; may be empty.
    std::function<void()> sayWaiting;

    // In place of what it says.
    void Say(const QString& text);
    // The messages' texts, one a line, the last one's ended by `end`.
    void Show(CompileMessages messages, const QString& end);
    // The message that stands at a point of the view's viewport; null where none does.
    const CompileMessage* MessageAt(const QPoint& at) const;
    // Below what it says already, and in sight. Nothing for an empty text.
    void Add(const QString& text);
    QString Text() const;

  private:
    QPlainTextEdit& view_;
    CompileMessages messages_;  // what the first lines show
};

}  // namespace pixelgrove
