// The output window's context menu: its texts, commands and sizes.
#pragma once

#include <QSize>
#include <optional>

class QMenu;

namespace pixelgrove {

// Fills the menu. Each action carries its command id as data; entries of commands that `isAvailable` refuses
// are disabled. Main thread.
void FillOutputMenu(QMenu& menu, bool alwaysOnTop, bool fullScreen, bool (*isAvailable)(int commandId));

// The client size that a "Window Size" command asks for; nothing for other commands. Any thread.
std::optional<QSize> OutputMenuSize(int commandId);

}  // namespace pixelgrove
