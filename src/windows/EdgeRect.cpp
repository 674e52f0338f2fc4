#include "windows/EdgeRect.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pixelgrove {

namespace {
constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
}  // namespace

int Saturate(int64_t value) {
    return int(std::clamp<int64_t>(value, kMin, kMax));
}

int RoundToInt(double value) {
    if (std::isnan(value)) return 0;
    return int(std::clamp(std::round(value), double(kMin), double(kMax)));
}

EdgeRect FromQRect(const QRect& rect) {
    return {rect.left(), rect.top(), Saturate(int64_t{rect.right()} + 1),
            Saturate(int64_t{rect.bottom()} + 1)};
}

QRect ToQRect(const EdgeRect& rect) {
    return QRect(QPoint(rect.left, rect.top),
                 QPoint(Saturate(int64_t{rect.right} - 1), Saturate(int64_t{rect.bottom} - 1)));
}

EdgeRect Offset(const EdgeRect& rect, int64_t dx, int64_t dy) {
    return {Saturate(rect.left + dx), Saturate(rect.top + dy), Saturate(rect.right + dx),
            Saturate(rect.bottom + dy)};
}

EdgeRect Grown(const EdgeRect& rect, int pixels) {
    const int64_t by = pixels;
    return {Saturate(rect.left - by), Saturate(rect.top - by), Saturate(rect.right + by),
            Saturate(rect.bottom + by)};
}

bool Contains(const EdgeRect& outer, const EdgeRect& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

EdgeRect United(const EdgeRect& a, const EdgeRect& b) {
    if (a.IsEmpty()) return b.IsEmpty() ? EdgeRect{} : b;
    if (b.IsEmpty()) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

EdgeRect Common(const EdgeRect& a, const EdgeRect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

std::optional<EdgeRect> DesktopRect(std::span<const EdgeRect> monitors) {
    EdgeRect all;
    for (const EdgeRect& monitor : monitors)
        all = United(all, monitor);
    if (all.IsEmpty()) return std::nullopt;
    return all;
}

}  // namespace pixelgrove
