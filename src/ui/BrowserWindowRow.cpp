#include "ui/BrowserWindowRow.h"

#include <memory>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "library/widgets/BrowserWindow.h"
#include "ui/MainWindow.h"
#include "ui/MessagePane.h"
#include "ui/ProjectCommands.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowTable.h"

namespace pixelgrove {

namespace {

BrowserWindow* FindBrowser() {
    return qobject_cast<BrowserWindow*>(Windows().Find(kShadertoyWin));
}

// These act on the open window alone.
void AddBrowserCommand(CommandRegistry& commands, int first, int last,
                       std::function<void(BrowserWindow& browser, int id)> run) {
    commands.Add({.first = first,
                  .last = last,
                  .run = [run = std::move(run)](int id) { run(*FindBrowser(), id); },
                  .isAvailable = [](int) { return FindBrowser() != nullptr; }});
}

}  // namespace

void AddBrowserWindow(WindowTable& windows, CommandRegistry& commands, const RecentLists& recent,
                      MainWindow& mainWindow, ProjectCommands& projects, MessagePane& pane) {
    const auto memory = std::make_shared<BrowserMemory>();
    const auto make = [memory, &recent, &mainWindow, &projects, &pane]() -> FrameWindow* {
        return new BrowserWindow(projects.service, *memory, recent.recentPlaylists.get(),
                                 {.load = [&projects](const QString& id) { projects.Load(id); },
                                  .runCommand = [&mainWindow](int id) { mainWindow.SendCommand(id); },
                                  .say = [&pane](const QString& text) { pane.Say(text); }});
    };
    windows.Add({QString::fromUtf16(kShadertoyWin), kCmdShadertoyBrowser, make}, commands);
    AddBrowserCommand(commands, kCmdOpenPlaylist, kCmdOpenPlaylist,
                      [](BrowserWindow& browser, int) { browser.OpenPlaylist(); });
    AddBrowserCommand(commands, kCmdSavePlaylist, kCmdSavePlaylist,
                      [](BrowserWindow& browser, int) { browser.SavePlaylist(); });
    AddBrowserCommand(
        commands, kCmdRecentPlaylistFirst, kCmdRecentPlaylistFirst + StringList::kCapacity - 1,
        [](BrowserWindow& browser, int id) { browser.OpenRecentPlaylist(id - kCmdRecentPlaylistFirst); });
}

void ShowFetchProgress(MessagePane& pane, const QString& text) {
    if (BrowserWindow* browser = FindBrowser())
        browser->ShowLoading(text);
    else if (!text.isEmpty())
        pane.Say(text);
}

}  // namespace pixelgrove
