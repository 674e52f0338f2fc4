// Menus made from rows of commands/MenuTable.h. Main thread.
#pragma once

#include <QString>
#include <functional>
#include <span>

#include "commands/CommandRegistry.h"
#include "commands/MenuTable.h"

class QAction;
class QMenu;
class QWidget;

namespace pixelgrove {

// The text as a menu shows it letter for letter.
QString MenuText(QString text);

// Sets an entry's state; the tick only of one that can have it.
void ShowState(QAction& action, const CommandState& state);

// Appends the rows to a menu or a menu bar; `made` gets the action of each Entry, FocusEntry and Tick with
// its row. The action carries the id as data.
void AddMenuRows(QWidget& menu, std::span<const MenuRow> rows,
                 const std::function<void(QAction& action, const MenuRow& row)>& made);

// Appends the rows to a context menu. Each entry shows its state, and the key that its command has in the
// menu bar, or in its own row: shown only, as a context menu takes no keys.
void FillMenu(QMenu& menu, std::span<const MenuRow> rows,
              const std::function<CommandState(int commandId)>& stateOf);

// The state of entries that are always available.
CommandState AlwaysAvailable(int commandId);

}  // namespace pixelgrove
