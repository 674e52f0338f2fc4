// Window layouts as they are stored, in the settings file and in layout files alike: the desktop's rectangle,
// each window's name and placement, and whether windows move together.
//
// Plain records; main thread. Which windows exist, and what a placement means on another desktop, is not
// known here.
#pragma once

#include "persist/XmlStore.h"
#include "windows/WindowRecord.h"

namespace pixelgrove {

struct WindowLayout {
    EdgeRect desktop;  // all monitors together, when the layout was saved
    WindowRows windows;
    bool lockWindows = false;
};

// Writes DTRect, Window1, Window2, ... and LockWin at the writer's level. False when the writer refused.
bool SaveLayout(XmlStore& store, const WindowLayout& layout);

// Reads them from the reader's current element, up to the first WindowN that is missing or kMaxWindowRows.
// The N-th row is renamed to the N-th stored name; the first row of that name, or a new one at the end, takes
// the placement and the open state, and isn't live any more. A window whose name is missing or too long is
// passed over. What isn't stored stays as it was, but for the desktop's rectangle, which is then empty. A
// hexadecimal field that is cut short or wrong is zero from there on.
void LoadLayout(XmlStore& store, WindowLayout& layout);

}  // namespace pixelgrove
