#include "windows/GroupMoves.h"

#include <cstdlib>

namespace pixelgrove {

namespace {

// One axis of a change: "fixed" stays where it is, all else goes from it by "to" pixels for "from", then all
// by "shift". The factor isn't kept as one number, since with a division in the end halves come out as
// halves.
struct AxisChange {
    AxisChange(int64_t before, int64_t after) {
        if (before == 0) return;
        from = double(before);
        to = double(after);
    }

    bool Collapses() const { return to / from <= 0; }
    int operator()(int value) const { return RoundToInt(fixed + (value - fixed) * to / from + shift); }

    double from = 1;
    double to = 1;
    double fixed = 0;
    double shift = 0;
};

double Middle(int a, int b) {
    return (double(a) + double(b)) / 2;
}

// A window that the user can see and take hold of.
bool IsThere(const WindowRecord& row) {
    return row.open && row.window == WindowPresence::Present;
}

void AlignPair(int& a, int& b, int distance) {
    if (std::abs(int64_t{a} - b) > distance) return;
    a = b = int((int64_t{a} + b) / 2);
}

}  // namespace

bool MovesAsGroup(bool lockWindows, bool leftShift) {
    return lockWindows != leftShift;
}

WindowDrag BeginDrag(const WindowRows& rows, SnapState& snap, bool lockWindows, bool leftShift) {
    WindowDrag drag;
    drag.inProgress = true;
    drag.snapBefore = snap.active;
    if (lockWindows || leftShift) snap.active = false;
    for (const WindowRecord& row : rows)
        if (IsThere(row)) drag.group = United(drag.group, row.placement.normal);
    return drag;
}

void EndDrag(WindowDrag& drag, SnapState& snap) {
    snap.active = drag.snapBefore;
    drag = {};
}

EdgeRect ChangedGroup(const EdgeRect& group, const EdgeRect& before, const EdgeRect& after) {
    if (before.Width() == after.Width() && before.Height() == after.Height())
        return Offset(group, int64_t{after.left} - before.left, int64_t{after.top} - before.top);

    AxisChange x(before.Width(), after.Width()), y(before.Height(), after.Height());
    if (x.Collapses() || y.Collapses()) return group;

    // A corner that stayed is an edge that stayed in each axis; so both axes can be looked at apart, the left
    // edge before the right and the top before the bottom, which is the order of the corners too.
    const bool left = before.left == after.left, right = before.right == after.right;
    const bool top = before.top == after.top, bottom = before.bottom == after.bottom;
    if (left || right)
        x.fixed = left ? before.left : before.right;
    else if (top || bottom)
        x.fixed = Middle(before.left, before.right);
    if (top || bottom)
        y.fixed = top ? before.top : before.bottom;
    else if (left || right)
        y.fixed = Middle(before.top, before.bottom);
    if (!left && !right && !top && !bottom) {
        x.fixed = before.left;
        x.shift = double(after.left) - before.left;
        y.fixed = before.top;
        y.shift = double(after.top) - before.top;
    }
    return {x(group.left), y(group.top), x(group.right), y(group.bottom)};
}

EdgeRect MapRect(const EdgeRect& rect, const EdgeRect& from, const EdgeRect& to) {
    AxisChange x(from.Width(), to.Width()), y(from.Height(), to.Height());
    x.fixed = from.left;
    x.shift = double(to.left) - from.left;
    y.fixed = from.top;
    y.shift = double(to.top) - from.top;
    return {x(rect.left), y(rect.top), x(rect.right), y(rect.bottom)};
}

std::vector<RowMove> ProposeGroupMove(const WindowRows& rows, const WindowDrag& drag, size_t dragged,
                                      const EdgeRect& proposed, bool lockWindows, bool leftShift) {
    if (!MovesAsGroup(lockWindows, leftShift) || !drag.inProgress || drag.group.IsEmpty()) return {};
    if (dragged >= rows.size()) return {};

    const EdgeRect group = ChangedGroup(drag.group, rows[dragged].placement.normal, proposed);
    std::vector<RowMove> moves;
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].live && IsThere(rows[i]))
            moves.push_back({i, MapRect(rows[i].placement.normal, drag.group, group)});
    return moves;
}

void AlignEdges(WindowRows& rows, int distance) {
    for (size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i].live || !IsThere(rows[i]) || !rows[i].placement.IsValid()) continue;
        for (size_t j = 0; j < rows.size(); ++j) {
            // The zeros of a window that was never placed are no edges to be aligned with.
            if (i == j || !IsThere(rows[j]) || !rows[j].placement.IsValid()) continue;
            EdgeRect &a = rows[i].placement.normal, &b = rows[j].placement.normal;
            AlignPair(a.left, b.left, distance);
            AlignPair(a.right, b.right, distance);
            AlignPair(a.top, b.top, distance);
            AlignPair(a.bottom, b.bottom, distance);
        }
    }
}

}  // namespace pixelgrove
