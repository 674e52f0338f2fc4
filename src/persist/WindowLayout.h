// Window layouts as they are stored, in the settings file and in layout files alike: the desktop's rectangle,
// each window's name and placement, and whether windows move together.
//
// Plain records; main thread. Which windows exist, and what a placement means on another desktop, is not
// known here.
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "persist/XmlStore.h"

namespace pixelgrove {

// Pixels; right and bottom are the first ones outside.
struct StoredRect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const StoredRect&) const = default;
};

// In the order of the file.
struct StoredPlacement {
    static constexpr int32_t kValidLength = 44;
    int32_t length = 0;  // kValidLength when the rest means something
    int32_t flags = 0;
    int32_t showCommand = 0;
    int32_t minimisedX = 0, minimisedY = 0;
    int32_t maximisedX = 0, maximisedY = 0;
    StoredRect normal;
    bool operator==(const StoredPlacement&) const = default;
};
static_assert(sizeof(StoredPlacement) == StoredPlacement::kValidLength);

struct StoredWindow {
    static constexpr qsizetype kMaxNameLength = 63;
    QString name;
    bool open = true;
    StoredPlacement placement;
};

struct WindowLayout {
    static constexpr size_t kMaxWindows = 64;
    StoredRect desktop;  // all monitors together, when the layout was saved
    std::vector<StoredWindow> windows;
    bool lockWindows = false;
};

// Writes DTRect, Window1, Window2, ... and LockWin at the writer's level. False when the writer refused.
bool SaveLayout(XmlStore& store, const WindowLayout& layout);

// Reads them from the reader's current element, up to the first WindowN that is missing or kMaxWindows. The
// N-th row is renamed to the N-th stored name; the first row of that name, or a new one at the end, takes the
// placement and the open state. A window whose name is missing or too long is passed over. What isn't stored
// stays as it was, but for the desktop's rectangle, which is then empty. A hexadecimal field that is cut
// short or wrong is zero from there on.
void LoadLayout(XmlStore& store, WindowLayout& layout);

}  // namespace pixelgrove
