// The output window's row in the table of windows. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
class Playback;
class WindowTable;

// Main window and playback outlive the table.
void AddOutputWindow(WindowTable& windows, CommandRegistry& commands, MainWindow& mainWindow,
                     Playback& playback);

}  // namespace pixelgrove
