#include "ui/PaletteCommands.h"

#include <memory>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "media/PaletteFile.h"
#include "persist/RecentList.h"
#include "platform/Files.h"
#include "ui/MainWindow.h"
#include "ui/palettes/PaletteBrowser.h"

namespace pixelgrove {

namespace {

// The user's own palettes, or those that were installed with the program.
QString PaletteFolder() {
    const QString own = PathOf(PathId::Palettes);
    return IsFolder(own) ? own : PathOf(PathId::ExeBase) + QStringLiteral("/Palettes");
}

void Load(AppState& app, MainWindow& mainWindow, const QString& path) {
    mainWindow.SetStatusText(ApplyPalette(app, path) ? QStringLiteral("Palette loaded.")
                                                     : QStringLiteral("Error loading palette."));
}

}  // namespace

bool ApplyPalette(AppState& app, const QString& path) {
    const auto block = std::make_unique<PaletteBlock>();
    if (!LoadPaletteFile(path, *block)) return false;
    FillPalette(*block);
    UnpackPalette(*block, *Hold(*app.palette.table));
    PushRecent(app.recent.recentPalettes.get(), path);
    return true;
}

void RegisterPaletteCommands(CommandRegistry& commands, AppState& app, MainWindow& mainWindow) {
    const auto memory = std::make_shared<PaletteBrowserMemory>();
    commands.Add(kCmdLoadPalette, [&app, &mainWindow, memory] {
        const QStringList chosen = RunPaletteBrowser(&mainWindow, {.folder = PaletteFolder()}, *memory);
        if (!chosen.isEmpty()) Load(app, mainWindow, chosen.constFirst());
    });
    commands.Add({.first = kCmdRecentPaletteFirst,
                  .last = kCmdRecentPaletteFirst + StringList::kCapacity - 1,
                  .run = [&app, &mainWindow](int id) {
                      const StringList* list = app.recent.recentPalettes.get();
                      // By value: loading it moves it to the top.
                      const QString path =
                          list ? list->entries.value(id - kCmdRecentPaletteFirst) : QString();
                      if (!path.isEmpty()) Load(app, mainWindow, path);
                  }});
}

}  // namespace pixelgrove
