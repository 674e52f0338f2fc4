// The menus as data, row by row: a Menu row opens a menu in the one that is open, or in the bar, and an End
// row closes it. Any thread.
#pragma once

#include <QString>
#include <span>

namespace pixelgrove {

enum class MenuRowKind { Menu, End, Separator, Placeholder, Entry, Tick };

struct MenuRow {
    MenuRowKind kind;
    int commandId = 0;           // of Entry and Tick
    const char16_t* text = u"";  // '&' marks the letter that chooses it
    const char* keys = "";       // one after the other with "; "; the menu shows the first
};

std::span<const MenuRow> MenuTable();

// The key that a command's entry shows, as QKeySequence reads it; empty without one. Not for id 0.
QString FirstKeyOf(int commandId);

}  // namespace pixelgrove
