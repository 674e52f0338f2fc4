#include "ui/ProjectMenu.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "ui/ProjectCommands.h"

namespace pixelgrove {

void RegisterProjectCommands(CommandRegistry& commands, ProjectCommands& projects,
                             const EditingForm& project) {
    commands.Add(kCmdNew, [&projects] { projects.New(); });
    commands.Add({.first = kCmdRestorePrevious,
                  .last = kCmdRestorePrevious,
                  .run = [&projects](int) { projects.RestorePrevious(); },
                  .isAvailable = [&project](int) { return project.previousProject != nullptr; }});
    commands.Add(kCmdOpenProject, [&projects] { projects.OpenProject(); });
    commands.Add(kCmdSaveProject, [&projects] { projects.SaveProject(); });
    commands.Add(kCmdSaveProjectAs, [&projects] { projects.SaveProjectAs(); });
    commands.Add(kCmdPasteProject, [&projects] {
        const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
        projects.TakeText(clipboard ? clipboard->text() : QString(), QStringLiteral("clipboard"));
    });
    commands.Add(kCmdOpenFile, [&projects] { projects.OpenFile(); });
    commands.Add(kCmdSaveFileAs, [&projects] { projects.SaveFileAs(); });
    commands.Add({.first = kCmdRecentFileFirst,
                  .last = kCmdRecentFileFirst + StringList::kCapacity - 1,
                  .run = [&projects](int id) { projects.OpenRecentFile(id - kCmdRecentFileFirst); }});
    commands.Add({.first = kCmdRecentProjectFirst,
                  .last = kCmdRecentProjectFirst + StringList::kCapacity - 1,
                  .run = [&projects](int id) { projects.OpenRecentProject(id - kCmdRecentProjectFirst); }});
}

}  // namespace pixelgrove
