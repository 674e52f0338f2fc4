// The commands of the editor's menu that work on live controls: values into the text and back, and the
// generator of their lines. Main thread.
#pragma once

#include <functional>

namespace pixelgrove {

class CodeView;
class CommandRegistry;
struct ControlSet;

// publish hands the controls' values over to the frames; the control on screen gives its own first. Editor,
// records and what publish holds outlive the registry.
void RegisterControlCommands(CommandRegistry& commands, CodeView& editor, ControlSet& controls,
                             std::function<void()> publish);

}  // namespace pixelgrove
