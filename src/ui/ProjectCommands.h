// ProjectCommands: New, Open Project, Save Project As, and the question that guards unsaved changes.
//
// Failures are told in the message pane, never by a message box. Main thread; owned by the main window.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace pixelgrove {

// The three places where a command waits for the user; tests put answers in their place.
struct UserDialogs {
    // True for Yes.
    std::function<bool(const QString& caption, const QString& text)> confirm;
    // The chosen path, empty when cancelled.
    std::function<QString(const QString& folder)> chooseProjectToOpen;
    std::function<QString(const QString& suggestion)> chooseProjectToSave;
};

// Real dialogs above the window.
UserDialogs MakeUserDialogs(QWidget* window);

class ProjectCommands {
  public:
    explicit ProjectCommands(UserDialogs userDialogs) : dialogs(std::move(userDialogs)) {}

    // Without unsaved changes true at once; otherwise asks, and only Yes gives true.
    bool ConfirmLoss();

    // The default Image stage alone. Doesn't ask.
    void New();
    void OpenProject();
    void SaveProjectAs();

    // Loads a project file into the editing form and says so in the message pane. When the file can't be read
    // the pane says why, the project stays as it was, and the result is false.
    bool Load(const QString& path);

    UserDialogs dialogs;
};

}  // namespace pixelgrove
