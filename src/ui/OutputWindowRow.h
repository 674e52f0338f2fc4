// The output window's row in the table of windows, and its commands. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
class Playback;
class WindowTable;
struct AppState;
struct Player;
struct RunControls;

// What is handed in outlives the table.
void AddOutputWindow(WindowTable& windows, CommandRegistry& commands, AppState& app, Player& player,
                     MainWindow& mainWindow, Playback& playback);

// In the window's caption: how far a recording is, or what plays.
void ShowOutputState(const RunControls& controls);

}  // namespace pixelgrove
