// All menus as data, row by row: a Menu row opens a menu in the one that is open, or in the bar, and an End
// row closes it. And the keys of commands that stand on no menu. Any thread.
#pragma once

#include <QString>
#include <span>

namespace pixelgrove {

// The key of a FocusEntry acts in the editor alone: other texts have the same keys of their own.
enum class MenuRowKind { Menu, End, Separator, Placeholder, Entry, FocusEntry, Tick };

struct MenuRow {
    MenuRowKind kind;
    int commandId = 0;           // of Entry, FocusEntry and Tick
    const char16_t* text = u"";  // '&' marks the letter that chooses it
    const char* keys = "";       // one after the other with "; "; the menu shows the first
};

struct KeyRow {
    int commandId;
    const char* keys;
};

std::span<const MenuRow> MenuBarRows();
std::span<const MenuRow> EditorMenuRows();
std::span<const MenuRow> OutputMenuRows();
// A menu bar of its own.
std::span<const MenuRow> BrowserMenuRows();
// Entries are of ChannelMenuId.
std::span<const MenuRow> ChannelMenuRows(bool inUse);
// Entries are of StageMenuId.
std::span<const MenuRow> StageMenuRows();
std::span<const KeyRow> KeyRows();

// The key that a command's entry in the menu bar shows, as QKeySequence reads it; empty without one. Not for
// id 0.
QString FirstKeyOf(int commandId);

}  // namespace pixelgrove
