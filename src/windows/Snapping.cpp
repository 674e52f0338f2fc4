#include "windows/Snapping.h"

#include <algorithm>
#include <cstdlib>

namespace pixelgrove {

EdgeRect SnapRect(const EdgeRect& proposed, std::span<const EdgeRect> others, int distance) {
    const int64_t width = proposed.Width(), height = proposed.Height();
    // Only the place changes, so two numbers say it all; the far edges follow from them.
    int64_t left = proposed.left, top = proposed.top;
    const auto near = [distance](int64_t a, int64_t b) { return std::abs(a - b) < distance; };

    for (const EdgeRect& other : others.first(std::min(others.size(), kMaxSnapWindows))) {
        if (top < other.bottom && top + height > other.top) {
            if (near(other.right, left)) left = other.right;
            if (near(other.left, left + width)) left = other.left - width;
        }
        // Asked of the place that the steps above gave: a window that has just snapped beside this one no
        // longer lies above or below it. The overlap is asked anew for the second step for the same reason.
        const auto overlaps = [&] { return left < other.right && left + width > other.left; };
        if (near(other.bottom, top) && overlaps()) top = other.bottom;
        if (near(other.top, top + height) && overlaps()) top = other.top - height;
    }
    return Offset(proposed, left - proposed.left, top - proposed.top);
}

std::optional<EdgeRect> SnapMoveStep(SnapState& state, const EdgeRect& proposed,
                                     std::span<const EdgeRect> others) {
    if (!state.active) return std::nullopt;
    if (state.moves++ != 1) return std::nullopt;
    state.moves = 0;
    return SnapRect(proposed, others, state.distance);
}

}  // namespace pixelgrove
