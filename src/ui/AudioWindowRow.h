// The window "Audio Configuration" among the program's windows. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class WindowTable;
struct AudioParameters;

// Its row and its command, for the main window's table. What is handed in outlives both.
void AddAudioWindow(WindowTable& windows, CommandRegistry& commands, AudioParameters& parameters);

}  // namespace pixelgrove
