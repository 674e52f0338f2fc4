// The commands that load a palette: by the browser, and from the recent list. Main thread.
#pragma once

#include <QString>

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
struct AppState;

// What is handed in outlives the registry.
void RegisterPaletteCommands(CommandRegistry& commands, AppState& app, MainWindow& mainWindow);

// Puts the file's palette, stretched to full size, in place of the one in use, and the path on top of the
// recent palettes. False, with no change, for a file that is no palette; an empty palette is black.
bool ApplyPalette(AppState& app, const QString& path);

}  // namespace pixelgrove
