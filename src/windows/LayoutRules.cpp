#include "windows/LayoutRules.h"

#include <limits>

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
        row.defaultPlacement = row.placement;
        rows.push_back(row);
    }
    return rows;
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
