// LayoutCommands: layout files (.STL): load, save, and the submenu of those in the layout folder; and the
// commands of how windows keep their places.
//
// Failures are told in the message pane. Main thread; owned by the main window.
#pragma once

#include <QStringList>
#include <functional>
#include <utility>

#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

class CommandRegistry;
class MessagePane;
class WindowTable;
struct AppState;

class LayoutCommands {
  public:
    // What is handed in by reference outlives this object. openLater is to post kCmdOpenWindows.
    LayoutCommands(const UserDialogs& dialogs, MessagePane& pane, WindowTable& windows,
                   std::function<void()> openLater)
        : dialogs_(dialogs), pane_(pane), windows_(windows), openLater_(std::move(openLater)) {}

    // Brings the windows in line with the registry.
    void Apply();
    // What Apply has left for later; nothing for a window that is there by then.
    void OpenMissing();

    void Load();
    // The new file stands in Names from then on.
    void Save();
    // Loads the layout of that name from the layout folder; what isn't there says "Error loading file.".
    void LoadNamed(const QString& name);

    // The base names of the layout folder's files, sorted without regard to case, as many as the submenu has
    // ids for.
    QStringList Names() const;

  private:
    void LoadFile(const QString& path);

    const UserDialogs& dialogs_;
    MessagePane& pane_;
    WindowTable& windows_;
    std::function<void()> openLater_;
};

// The commands of layouts, of locked windows and of snapping. All of them outlive the registry. nameOf says
// which layout the submenu's entry with an id names, empty for none; namesChanged is called where Names may
// have changed.
void RegisterLayoutCommands(CommandRegistry& commands, AppState& app, LayoutCommands& layouts,
                            std::function<QString(int commandId)> nameOf, std::function<void()> namesChanged);

}  // namespace pixelgrove
