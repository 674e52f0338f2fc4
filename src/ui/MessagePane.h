// MessagePane: what the program tells the user below the editor. Whoever has something to say calls it.
//
// Main thread; owned by the main window.
#pragma once

#include <QString>

class QPlainTextEdit;

namespace pixelgrove {

class MessagePane {
  public:
    // The view outlives this object.
    explicit MessagePane(QPlainTextEdit& view) : view_(view) {}

    // In place of what it says.
    void Say(const QString& text);
    // Below what it says already. Nothing for an empty text.
    void Add(const QString& text);
    QString Text() const;

  private:
    QPlainTextEdit& view_;
};

}  // namespace pixelgrove
