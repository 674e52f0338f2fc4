// Moving and sizing all windows as one group, and aligning them after a drag. Main thread.
//
// A drag: at its start BeginDrag; for each proposed place ProposeGroupMove, and snapping if that gives
// nothing; at its end placements are read anew and, with snapping on, AlignEdges runs. Rows keep the places
// of the drag's start meanwhile: every proposal is measured from there, so roundings don't add up.
#pragma once

#include <vector>

#include "windows/Snapping.h"
#include "windows/WindowRecord.h"

namespace pixelgrove {

struct WindowDrag {
    EdgeRect group;  // around all open windows when the drag began; empty outside a drag
    bool inProgress = false;
    bool snapBefore = false;  // whether snapping was on before the drag
};

// True when windows move as a group: the user's setting, which left Shift inverts while it is down.
bool MovesAsGroup(bool lockWindows, bool leftShift);

// The start of a drag. Snapping is off during it when windows are locked together or left Shift is down: so
// also when Shift makes a locked window move alone.
WindowDrag BeginDrag(const WindowRows& rows, SnapState& snap, bool lockWindows, bool leftShift);

// The end: the snap state is as before. The caller reads the placements, then aligns if snapping is on.
void EndDrag(WindowDrag& drag, SnapState& snap);

// The group's rectangle after one window of it went from "before" to "after". Moved only: the group is offset
// alike. Resized: it is scaled by the window's factors, new size to old, about the point of the window that
// stayed: a corner (top left, top right, bottom left, bottom right), else the middle of an edge (left, right,
// top, bottom), else the point that makes the window itself end where it was put. An axis without an extent
// before has the factor 1; with a factor of 0 or less the group stays.
EdgeRect ChangedGroup(const EdgeRect& group, const EdgeRect& before, const EdgeRect& after);

// A rectangle inside "from" to the same part of "to", each side rounded half away from zero. An axis in which
// "from" has no extent is only offset.
EdgeRect MapRect(const EdgeRect& rect, const EdgeRect& from, const EdgeRect& to);

struct RowMove {
    size_t row;
    EdgeRect rect;
};

// Where all windows go when the window of row "dragged" is to go to "proposed": one entry for each open, live
// row with a window, the dragged one among them; a proposal back at the start takes all of them back. Empty
// when the group doesn't act and the window goes alone: windows don't move as a group now, no drag is in
// progress, or there is no such row.
std::vector<RowMove> ProposeGroupMove(const WindowRows& rows, const WindowDrag& drag, size_t dragged,
                                      const EdgeRect& proposed, bool lockWindows, bool leftShift);

// After a drag: for each live row against every other row, two left edges that differ by at most the distance
// both become their mean, and so do right, top and bottom edges. Sizes may change by this. Only open rows
// with a window and a valid placement count. The caller puts the live and open windows where their rows say.
void AlignEdges(WindowRows& rows, int distance = kSnapDistance);

}  // namespace pixelgrove
