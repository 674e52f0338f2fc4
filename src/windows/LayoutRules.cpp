#include "windows/LayoutRules.h"

#include <algorithm>
#include <limits>

#include "windows/FrameGeometry.h"

namespace pixelgrove {

namespace {

constexpr int64_t kWideWorkArea = 1920;
constexpr int64_t kHighWorkArea = 1200;
constexpr double kMiddlePart = 0.86;

constexpr int kShowNormal = 1;

int Pixel(double fraction, int64_t size, int origin, bool pulled) {
    const double s = double(size);
    if (pulled) fraction = (fraction * kMiddlePart * s + (s - kMiddlePart * s) * 0.5) / s;
    return Saturate(int64_t{origin} + RoundToInt(fraction * s));
}

// True when value * size, with value a difference of two ints, can't leave 64 bits.
bool IsSaneSize(int64_t size) {
    return size > 0 && size <= std::numeric_limits<int>::max();
}

constexpr int kCaptionButtons = 3 * kCaptionButtonWidth + kSizingBorder;

// How far the nearest point of the area is from the rectangle's middle, in the larger axis.
int64_t DistanceTo(const EdgeRect& area, const EdgeRect& rect) {
    const int64_t x = (int64_t{rect.left} + rect.right) / 2, y = (int64_t{rect.top} + rect.bottom) / 2;
    return std::max({area.left - x, x - area.right, area.top - y, y - area.bottom, int64_t{0}});
}

// The nearest place for a span of that size between the two ends; at the first end if it is too long.
int64_t MovedBetween(int64_t at, int64_t size, int64_t first, int64_t last) {
    return std::max(first, std::min(at, last - size));
}

}  // namespace

WindowPlacement DefaultPlacement(const EdgeRect& workArea, const AreaFractions& fractions, int frameBorder) {
    const int64_t width = workArea.Width(), height = workArea.Height();
    const bool pulled = width > kWideWorkArea && height > kHighWorkArea;
    WindowPlacement placement;
    placement.length = WindowPlacement::kLength;
    placement.showCommand = kShowNormal;
    placement.normal = Grown(
        {Pixel(fractions.x0, width, workArea.left, pulled), Pixel(fractions.y0, height, workArea.top, pulled),
         Pixel(fractions.x1, width, workArea.left, pulled),
         Pixel(fractions.y1, height, workArea.top, pulled)},
        frameBorder);
    return placement;
}

WindowRows DefaultWindowRows(const EdgeRect& workArea, int64_t primaryPixels, int frameBorder) {
    const bool large = primaryPixels >= kLargeScreenPixels;
    const struct {
        const char16_t* name;
        AreaFractions place;
        bool open;
    } windows[] = {
        {kEditWin, {0.5, 0, 1, 1}, true},
        {kOutputWin, {0, 0, 0.5, 0.5}, true},
        {kShadertoyWin, {0, 0.5, 0.5, large ? 0.7 : 1}, true},
        {kAudioConfigWin, {0, 0.7, 0.5, 1}, large},
    };
    WindowRows rows;
    for (const auto& window : windows) {
        WindowRecord row;
        row.name = QString::fromUtf16(window.name);
        row.open = window.open;
        if (window.open) row.placement = DefaultPlacement(workArea, window.place, frameBorder);
        rows.push_back(row);
    }
    LeaveRoomToDrag(rows, workArea);
    for (WindowRecord& row : rows)
        row.defaultPlacement = row.placement;
    return rows;
}

void LeaveRoomToDrag(WindowRows& rows, const EdgeRect& workArea) {
    const int64_t highest = workArea.Height() - kDragRoom;
    if (highest <= kDragRoom) return;
    for (WindowRecord& row : rows) {
        EdgeRect& rect = row.placement.normal;
        if (row.placement.IsValid() && rect.Height() > highest) rect.bottom = Saturate(rect.top + highest);
    }
}

bool IsInSight(const EdgeRect& rect, std::span<const EdgeRect> workAreas) {
    const EdgeRect grip{rect.left, rect.top, Saturate(int64_t{rect.right} - kCaptionButtons),
                        Saturate(int64_t{rect.top} + kCaptionHeight)};
    return std::ranges::any_of(workAreas, [&grip](const EdgeRect& area) {
        const EdgeRect seen = Common(grip, area);
        return seen.Width() >= kCaptionGripWidth && seen.Height() >= kCaptionGripHeight;
    });
}

EdgeRect BroughtIntoSight(const EdgeRect& rect, const QSize& smallest, std::span<const EdgeRect> workAreas) {
    EdgeRect all;
    for (const EdgeRect& area : workAreas)
        all = United(all, area);
    if (all.IsEmpty()) return rect;
    int64_t width = std::max<int64_t>(rect.Width(), smallest.width());
    int64_t height = std::max<int64_t>(rect.Height(), smallest.height());
    const EdgeRect large{rect.left, rect.top, Saturate(rect.left + width), Saturate(rect.top + height)};
    if (width <= 2 * all.Width() && height <= 2 * all.Height() && IsInSight(large, workAreas)) return large;

    const EdgeRect& area = *std::ranges::min_element(
        workAreas, {}, [&large](const EdgeRect& candidate) { return DistanceTo(candidate, large); });
    width = std::clamp<int64_t>(width, smallest.width(), std::max<int64_t>(area.Width(), smallest.width()));
    height =
        std::clamp<int64_t>(height, smallest.height(), std::max<int64_t>(area.Height(), smallest.height()));
    const int64_t left = MovedBetween(rect.left, width, area.left, area.right);
    const int64_t top = MovedBetween(rect.top, height, area.top, area.bottom);
    return {Saturate(left), Saturate(top), Saturate(left + width), Saturate(top + height)};
}

void RecoverRows(WindowRows& rows, const EdgeRect& workArea) {
    const int64_t areaWidth = workArea.Width(), areaHeight = workArea.Height();
    if (!IsSaneSize(areaWidth) || !IsSaneSize(areaHeight)) return;

    EdgeRect bounds;
    for (const WindowRecord& row : rows)
        if (row.open && row.placement.IsValid()) bounds = United(bounds, row.placement.normal);
    if (bounds.IsEmpty()) return;

    const bool inside = Contains(workArea, bounds);
    // Twice the way between the middles, halved last so that one pixel in two isn't lost.
    const int64_t dx = (int64_t{workArea.left} + workArea.right - bounds.left - bounds.right) / 2;
    const int64_t dy = (int64_t{workArea.top} + workArea.bottom - bounds.top - bounds.bottom) / 2;
    for (WindowRecord& row : rows) {
        if (!row.placement.IsValid()) continue;
        EdgeRect& rect = row.placement.normal;
        if (inside) {
            rect = Offset(rect, dx, dy);
            continue;
        }
        // Place and size are scaled, not the four sides: each is truncated by itself.
        const int64_t width = rect.Width() * areaWidth / bounds.Width();
        const int64_t height = rect.Height() * areaHeight / bounds.Height();
        rect.left = Saturate((int64_t{rect.left} - bounds.left) * areaWidth / bounds.Width() + workArea.left);
        rect.top = Saturate((int64_t{rect.top} - bounds.top) * areaHeight / bounds.Height() + workArea.top);
        rect.right = Saturate(int64_t{rect.left} + Saturate(width));
        rect.bottom = Saturate(int64_t{rect.top} + Saturate(height));
    }
}

LayoutAction ActionToApply(const WindowRecord& row, bool hasWindow) {
    if (!hasWindow) return row.open ? LayoutAction::Open : LayoutAction::Nothing;
    if (!row.open) return LayoutAction::Close;
    return row.placement.IsValid() ? LayoutAction::Place : LayoutAction::Show;
}

}  // namespace pixelgrove
