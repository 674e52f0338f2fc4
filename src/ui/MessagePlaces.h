// MessagePlaces: from the compiler's messages to the lines that they are about: marks in the editor, and the
// jump by a double click on a message.
//
// Main thread; owned by the main window.
#pragma once

#include <QObject>

#include "core/CompileMessage.h"

class QPlainTextEdit;

namespace pixelgrove {

class CodeView;
class MessagePane;
struct EditingForm;
struct UserDialogs;

class MessagePlaces : public QObject {
  public:
    // The view is the one that the pane writes to. What is handed in outlives this object.
    MessagePlaces(QPlainTextEdit& view, MessagePane& pane, CodeView& editor, EditingForm& project,
                  UserDialogs& dialogs);

    // Puts the messages into the pane, and marks in the shown stage the lines of those that name it.
    void Show(const CompileMessages& messages, const QString& end);
    // Goes to the message's line in the shown stage, or has its file opened in the user's text editor.
    // Nothing for one without a place.
    void JumpTo(const CompileMessage& message);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    MessagePane& pane_;
    CodeView& editor_;
    EditingForm& project_;
    UserDialogs& dialogs_;
};

}  // namespace pixelgrove
