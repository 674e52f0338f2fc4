// Snapping: while a window is dragged, its edges are pulled to the facing edges of the program's other
// visible windows. Rules only: who is dragged and who is visible is told by the caller. Main thread.
#pragma once

#include "windows/EdgeRect.h"

namespace pixelgrove {

// Pixels. An edge snaps when it is nearer than this: with 12 it does at 11 and doesn't at 12.
inline constexpr int kSnapDistance = 12;

// Windows beyond this number in the list attract nothing.
inline constexpr size_t kMaxSnapWindows = 128;

struct SnapState {
    bool active = false;  // the user's setting; cleared for a drag in which windows move as a group
    int distance = kSnapDistance;
    int moves = 0;  // since the last move that was snapped
};

// The rectangle with its place adjusted, its size as it was. Only opposite edges attract, left to right and
// top to bottom, and only where the windows lie beside each other; aligning equal edges is AlignEdges' work
// after the drag, and the edges of screens attract nothing. Others are taken in order, each against the
// rectangle as the ones before it left it, so a later window can override an earlier one.
EdgeRect SnapRect(const EdgeRect& proposed, std::span<const EdgeRect> others, int distance = kSnapDistance);

// One step of a drag by the caption; resizing isn't snapped and doesn't come here. Every second step is
// snapped, the first one isn't. Nothing when this step isn't to be adjusted; a step while snapping is off
// isn't counted.
std::optional<EdgeRect> SnapMoveStep(SnapState& state, const EdgeRect& proposed,
                                     std::span<const EdgeRect> others);

}  // namespace pixelgrove
