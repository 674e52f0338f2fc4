// The commands that act on the editor's text: editing, search, zoom, help, included files. Main thread.
#pragma once

namespace pixelgrove {

class CodeView;
class CommandRegistry;
class FindReplace;
struct UserDialogs;

// All of them outlive the registry.
void RegisterEditorCommands(CommandRegistry& commands, CodeView& editor, FindReplace& find,
                            const UserDialogs& dialogs);

}  // namespace pixelgrove
