// A rectangle by its four edges, as all window geometry here computes with. Plain values, any thread.
//
// Screen pixels, x to the right and y down. Right and bottom are the first pixel outside, so that a width is
// right - left and two windows that touch share a number; QRect's right() is one less. Rectangles come from
// files too: every function takes any four numbers and saturates instead of overflowing.
#pragma once

#include <QRect>
#include <cstdint>
#include <optional>
#include <span>

namespace pixelgrove {

struct EdgeRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int64_t Width() const { return int64_t{right} - left; }
    int64_t Height() const { return int64_t{bottom} - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool operator==(const EdgeRect&) const = default;
};

// The nearest int that there is.
int Saturate(int64_t value);

// Rounded half away from zero, then the nearest int that there is; 0 for what is no number.
int RoundToInt(double value);

EdgeRect FromQRect(const QRect& rect);
QRect ToQRect(const EdgeRect& rect);

EdgeRect Offset(const EdgeRect& rect, int64_t dx, int64_t dy);

// Each side outwards by that many pixels.
EdgeRect Grown(const EdgeRect& rect, int pixels);

// True when no pixel of inner lies outside outer.
bool Contains(const EdgeRect& outer, const EdgeRect& inner);

// The smallest rectangle around both; an empty one adds nothing.
EdgeRect United(const EdgeRect& a, const EdgeRect& b);

// What both have in common; empty, with whatever edges, when that is nothing.
EdgeRect Common(const EdgeRect& a, const EdgeRect& b);

// The union of all monitors' rectangles; nothing when there is no monitor with an area.
std::optional<EdgeRect> DesktopRect(std::span<const EdgeRect> monitors);

}  // namespace pixelgrove
