// ChannelMenu: the menu that chooses what a channel reads, and what its entries do.
//
// Main thread.
#pragma once

#include <functional>

#include "core/Stages.h"
#include "windows/widgets/UserDialogs.h"

class QMenu;
class QWidget;

namespace pixelgrove {

// A menu that deletes itself once it is closed; run gets the chosen ChannelMenuId. "Reset Channel" is there
// for a channel that is in use.
QMenu* MakeChannelMenu(QWidget* parent, bool inUse, std::function<void(int entryId)> run);

// Does what the entry says with a channel of the editing form; it may ask for a file first. False, with the
// channel as it was, for what is no entry and when no file was chosen. A file that can't be used leaves the
// channel without data: see the entries.
bool RunChannelMenu(int entryId, ChannelInput& channel, const UserDialogs& dialogs);

}  // namespace pixelgrove
