// The commands that record, and the dialog that says how. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
struct AppState;
struct WorkbenchSettings;

// What is handed in outlives the registry.
void RegisterRecordingCommands(CommandRegistry& commands, AppState& app, const WorkbenchSettings& settings,
                               MainWindow& mainWindow);

}  // namespace pixelgrove
