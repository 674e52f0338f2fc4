#include "windows/widgets/UserDialogs.h"

#include <QUrl>

#include "platform/Programs.h"
#include "platform/TextEditor.h"

namespace pixelgrove {

UserDialogs MakeUserDialogs(QWidget* window) {
    UserDialogs dialogs;
    dialogs.ask = [window](const QString& caption, const QString& text) {
        return AskYesNoCancel(window, caption, text);
    };
    dialogs.confirm = [window](const QString& caption, const QString& text) {
        return AskYesNoCancel(window, caption, text) == Answer::Yes;
    };
    dialogs.inform = [](QWidget& owner, const QString& caption, const QString& text) {
        ShowInformation(&owner, caption, text);
    };
    dialogs.askForFile = [window](const FileQuestion& question) { return AskForFile(window, question); };
    dialogs.askForFiles = [window](const FileQuestion& question) { return AskForFiles(window, question); };
    dialogs.askForFolder = [window](const FileQuestion& question) { return AskForFolder(window, question); };
    // Nothing is said when the desktop has no program for it.
    dialogs.openUrl = [](const QUrl& url) { OpenAddress(url.toString(QUrl::FullyEncoded)); };
    dialogs.openTextEditor = [](const QString& path, int line) { OpenInTextEditor(path, line); };
    return dialogs;
}

}  // namespace pixelgrove
