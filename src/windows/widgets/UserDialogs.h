// UserDialogs: the places where a command waits for the user or hands over to another program.
//
// The commands call these and nothing else for it, so tests put answers in their place. Main thread.
#pragma once

#include <QString>
#include <functional>

#include "windows/widgets/Dialogs.h"

class QUrl;
class QWidget;

namespace pixelgrove {

struct UserDialogs {
    // True for Yes.
    std::function<bool(const QString& caption, const QString& text)> confirm;
    std::function<Answer(const QString& caption, const QString& text)> ask;
    // A message that waits to be read; above the owner's window.
    std::function<void(QWidget& owner, const QString& caption, const QString& text)> inform;
    // The chosen path, empty when cancelled.
    std::function<QString(const FileQuestion& question)> askForFile;
    std::function<QStringList(const FileQuestion& question)> askForFiles;
    std::function<QString(const FileQuestion& question)> askForFolder;
    // The user's web browser.
    std::function<void(const QUrl& url)> openUrl;
    // The user's text editor; lines count from 1, 0 asks for none.
    std::function<void(const QString& path, int line)> openTextEditor;
};

// Real dialogs above the window, which outlives them, and the desktop's programs.
UserDialogs MakeUserDialogs(QWidget* window);

}  // namespace pixelgrove
