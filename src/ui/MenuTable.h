// The menus as data, row by row: a Menu row opens a menu in the one that is open, or in the bar, and an End
// row closes it. Any thread.
#pragma once

#include <span>

namespace pixelgrove {

enum class MenuRowKind { Menu, End, Separator, Placeholder, Entry, Tick };

struct MenuRow {
    MenuRowKind kind;
    int commandId = 0;           // of Entry and Tick
    const char16_t* text = u"";  // '&' marks the letter that chooses it
    const char* keys = "";
};

std::span<const MenuRow> MenuTable();

}  // namespace pixelgrove
