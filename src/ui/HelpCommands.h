// The commands of the Help menu. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
struct UserDialogs;

// What is handed in outlives the registry.
void RegisterHelpCommands(CommandRegistry& commands, MainWindow& mainWindow, const UserDialogs& dialogs);

}  // namespace pixelgrove
