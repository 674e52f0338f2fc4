// The commands of the editor's menu that work on live controls. Main thread.
#pragma once

namespace pixelgrove {

class CodeView;
class CommandRegistry;

// The editor outlives the registry.
void RegisterControlCommands(CommandRegistry& commands, CodeView& editor);

}  // namespace pixelgrove
