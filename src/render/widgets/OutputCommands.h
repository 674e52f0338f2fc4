// The commands of the output window, which stand on its context menu. Main thread.
#pragma once

#include <functional>

namespace pixelgrove {

class CommandRegistry;
class OutputWindow;

// They act on what `window` gives, and are available while that is no null.
void RegisterOutputCommands(CommandRegistry& commands, std::function<OutputWindow*()> window);

}  // namespace pixelgrove
