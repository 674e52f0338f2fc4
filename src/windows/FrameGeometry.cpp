#include "windows/FrameGeometry.h"

#include <algorithm>

namespace pixelgrove {

namespace {

// From the corners: how far their zones reach. The zones at left and top are one pixel longer.
constexpr int kCornerBefore = 16;
constexpr int kCornerBehind = 15;

// From a corner to the far and near end of a grip.
constexpr int kGripFar = 18;
constexpr int kGripNear = 12;

FrameZone BorderZone(const FrameShape& shape, QPoint point) {
    const int width = shape.size.width(), height = shape.size.height();
    // Corners are measured in the client area with a border all around, so its upper edge lies inside the
    // caption.
    const int y = point.y() - (shape.captionHeight - kSizingBorder);
    const int bottom = height - (shape.captionHeight - kSizingBorder);
    const bool left = point.x() < kCornerBefore, right = point.x() >= width - kCornerBehind;
    const bool upper = y < kCornerBefore, lower = y >= bottom - kCornerBehind;
    if (left && upper) return FrameZone::TopLeft;
    if (left && lower) return FrameZone::BottomLeft;
    if (right && upper) return FrameZone::TopRight;
    if (right && lower) return FrameZone::BottomRight;
    if (point.x() < kSizingBorder) return FrameZone::Left;
    if (point.x() >= width - kSizingBorder) return FrameZone::Right;
    return point.y() < kSizingBorder ? FrameZone::Top : FrameZone::Bottom;
}

// One grip whose lines follow each other along x or y, from "first" on, across the strip.
void AddGrip(std::vector<GripPart>& parts, const EdgeRect& strip, bool alongX, int first) {
    const int last = first + kGripFar - kGripNear - 1;
    const auto add = [&](int from, int to, bool outline) {
        EdgeRect rect = strip;
        (alongX ? rect.left : rect.top) = from;
        (alongX ? rect.right : rect.bottom) = to;
        parts.push_back({rect, outline});
    };
    add(first, first + 1, true);
    add(first + 1, last, false);
    add(last, last + 1, true);
}

}  // namespace

EdgeRect ClientRect(const FrameShape& shape) {
    const int border = shape.sizable ? kSizingBorder : 0;
    return {border, shape.captionHeight, shape.size.width() - border, shape.size.height() - border};
}

FrameZone ZoneAt(const FrameShape& shape, QPoint point) {
    const int width = shape.size.width(), height = shape.size.height();
    const int x = point.x(), y = point.y();
    if (x < 0 || y < 0 || x >= width || y >= height) return FrameZone::Outside;
    if (shape.sizable &&
        (x < kSizingBorder || x >= width - kSizingBorder || y < kSizingBorder || y >= height - kSizingBorder))
        return BorderZone(shape, point);
    return y < shape.captionHeight ? FrameZone::Caption : FrameZone::Client;
}

Qt::Edges EdgesOf(FrameZone zone) {
    switch (zone) {
        case FrameZone::Left:
            return Qt::LeftEdge;
        case FrameZone::Right:
            return Qt::RightEdge;
        case FrameZone::Top:
            return Qt::TopEdge;
        case FrameZone::Bottom:
            return Qt::BottomEdge;
        case FrameZone::TopLeft:
            return Qt::TopEdge | Qt::LeftEdge;
        case FrameZone::TopRight:
            return Qt::TopEdge | Qt::RightEdge;
        case FrameZone::BottomLeft:
            return Qt::BottomEdge | Qt::LeftEdge;
        case FrameZone::BottomRight:
            return Qt::BottomEdge | Qt::RightEdge;
        default:
            return {};
    }
}

EdgeRect DragRect(const EdgeRect& atPress, FrameZone zone, QPoint way, QSize minimum) {
    if (zone == FrameZone::Caption) return Offset(atPress, way.x(), way.y());
    const Qt::Edges edges = EdgesOf(zone);
    EdgeRect rect = atPress;
    const auto wished = [](int edge, int by) { return Saturate(int64_t{edge} + by); };
    const auto stop = [](int other, int size) { return Saturate(int64_t{other} + size); };
    if (edges.testFlag(Qt::LeftEdge))
        rect.left = std::min(wished(rect.left, way.x()), stop(rect.right, -minimum.width()));
    if (edges.testFlag(Qt::RightEdge))
        rect.right = std::max(wished(rect.right, way.x()), stop(rect.left, minimum.width()));
    if (edges.testFlag(Qt::TopEdge))
        rect.top = std::min(wished(rect.top, way.y()), stop(rect.bottom, -minimum.height()));
    if (edges.testFlag(Qt::BottomEdge))
        rect.bottom = std::max(wished(rect.bottom, way.y()), stop(rect.top, minimum.height()));
    return rect;
}

std::vector<EdgeRect> BorderStrips(const FrameShape& shape) {
    if (!shape.sizable) return {};
    const int width = shape.size.width(), height = shape.size.height();
    return {{0, shape.captionHeight, kPaintedBorder, height},
            {width - kPaintedBorder, shape.captionHeight, width, height},
            {0, height - kPaintedBorder, width, height}};
}

std::vector<GripPart> GripParts(const FrameShape& shape) {
    const std::vector<EdgeRect> strips = BorderStrips(shape);
    if (strips.empty()) return {};
    std::vector<GripPart> parts;
    AddGrip(parts, strips[0], false, shape.size.height() - kGripFar);
    AddGrip(parts, strips[1], false, shape.size.height() - kGripFar);
    AddGrip(parts, strips[2], true, kGripNear);
    AddGrip(parts, strips[2], true, shape.size.width() - kGripFar);
    return parts;
}

}  // namespace pixelgrove
