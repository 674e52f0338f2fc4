// The submenus of recent files: which list stands in which submenu, and their entries. Main thread.
#pragma once

#include <array>
#include <memory>

#include "core/AppState.h"

namespace pixelgrove {

class Menus;

struct RecentMenuRow {
    const char16_t* label;  // of the submenu
    int firstCommandId;
    std::unique_ptr<StringList> RecentLists::*list;
};
extern const std::array<RecentMenuRow, 3> kRecentMenus;

// Fills the submenu from its list: "1 PATH" for the newest, and so on. An empty list leaves it empty.
void FillRecentMenu(Menus& menus, const RecentMenuRow& row, const RecentLists& lists);

}  // namespace pixelgrove
