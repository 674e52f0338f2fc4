// The commands that load a palette: by the browser, and from the recent list. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
struct AppState;

// What is handed in outlives the registry.
void RegisterPaletteCommands(CommandRegistry& commands, AppState& app, MainWindow& mainWindow);

}  // namespace pixelgrove
