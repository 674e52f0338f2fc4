// The commands that take a picture of what plays, onto the clipboard or into a file. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class MessagePane;
struct Player;
struct UserDialogs;

// They ask the run for its next frame, and do with it what was chosen last once it has come. What is handed
// in outlives the registry.
void RegisterPictureTaking(CommandRegistry& commands, const Player& player, const UserDialogs& dialogs,
                           MessagePane& pane);

}  // namespace pixelgrove
