// Rules of window layouts: the places that windows get at first, and what becomes of a stored layout on this
// desktop. How a layout is stored isn't known here. Main thread.
#pragma once

#include <QSize>
#include <span>

#include "windows/WindowRecord.h"

namespace pixelgrove {

// Two corners as fractions of the work area.
struct AreaFractions {
    double x0, y0, x1, y1;
};

// The screen from which on there is room for the audio window: 1920 by 1080, in pixels of area.
inline constexpr int64_t kLargeScreenPixels = 2'073'600;

// The place that the fractions of the work area give, rounded half away from zero and grown by frameBorder on
// all sides, as a valid placement with show command 1. On a work area wider than 1920 and higher than 1200
// the fractions are first pulled into its middle 86 percent.
WindowPlacement DefaultPlacement(const EdgeRect& workArea, const AreaFractions& fractions, int frameBorder);

// The rows of a first start: editor, output, project search and audio window, in this order, none of them
// live or with a window, with room to drag. primaryPixels: area of the primary screen. Below
// kLargeScreenPixels the search window gets the audio window's part too, and the audio window has no
// placement and isn't open.
WindowRows DefaultWindowRows(const EdgeRect& workArea, int64_t primaryPixels, int frameBorder);

// For rows whose layout was stored when the union of the monitors was another than now; on the same desktop
// stored places are used as they are, even outside the work area.
//
// Brings the rows into the work area, keeping how they lie to each other. When the open ones together reach
// out of it, all rows are scaled so that these fill it, numbers truncated; when they lie in it, all rows are
// offset so that these are centred. Closed windows don't count for the size, but go along. Rows without a
// valid placement neither count nor change; nothing happens when no open one is left.
void RecoverRows(WindowRows& rows, const EdgeRect& workArea);

// A window as high as the work area can't be dragged down where the window manager keeps windows in it, and
// some take it as maximised. Rows that are this much from it, or higher, lose it at the bottom.
inline constexpr int kDragRoom = 32;
void LeaveRoomToDrag(WindowRows& rows, const EdgeRect& workArea);

// What must be seen of a frame's caption for the mouse to take hold of it, in pixels, buttons not counted.
inline constexpr int kCaptionGripWidth = 48;
inline constexpr int kCaptionGripHeight = 20;

// Whether that much of the caption of a frame at "rect" lies on one of the work areas.
bool IsInSight(const EdgeRect& rect, std::span<const EdgeRect> workAreas);

// The place for a window whose stored one may be anything. It stays as it is when its caption is in sight,
// but for a size below "smallest". Otherwise, and when it is beyond twice all work areas together, it is
// moved into the nearest work area, and becomes no larger than that unless "smallest" is. As given without
// work areas.
EdgeRect BroughtIntoSight(const EdgeRect& rect, const QSize& smallest, std::span<const EdgeRect> workAreas);

enum class LayoutAction {
    Nothing,
    Open,   // post the command that opens the window
    Close,  // close it like the user does
    Place,  // put it where the row says and show it
    Show    // no placement is known: show it where the platform puts it
};

// What brings one window in line with its row. The caller keeps windows from moving as a group meanwhile.
LayoutAction ActionToApply(const WindowRecord& row, bool hasWindow);

}  // namespace pixelgrove
