// The geometry of the program's own window frames: a caption above, a thin sizing border at the other sides,
// and the marks that show where its corners begin. Points and rectangles are relative to the frame's top left
// corner, in pixels; screen rectangles where it says so. No painting here. Any thread.
//
// Sizing zones: the frame is sized at the border, 5 pixels at left, right and bottom, and at the caption's
// uppermost 5. Along the border a corner reaches 16 pixels from the corner of the area below the caption,
// 15 at right and bottom; beside the caption all of the border belongs to the upper corners.
#pragma once

#include <QPoint>
#include <QSize>
#include <vector>

#include "windows/EdgeRect.h"

namespace pixelgrove {

inline constexpr int kSizingBorder = 5;

// From the frame's upper edge to the menu bar or the content, the sizing border included.
inline constexpr int kCaptionHeight = 30;
inline constexpr int kCaptionButtonWidth = 34;

// As painted; the innermost pixel lies below the client area's edge.
inline constexpr int kPaintedBorder = 6;

struct FrameShape {
    QSize size;  // of the whole frame
    int captionHeight = 0;
    bool sizable = true;  // false while maximised: no border then
};

enum class FrameZone {
    Outside,
    Client,
    Caption,
    Left,
    Right,
    Top,
    Bottom,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight
};

// What the frame leaves to its content.
EdgeRect ClientRect(const FrameShape& shape);

// The zone of a point. Buttons in the caption are the caption's own business.
FrameZone ZoneAt(const FrameShape& shape, QPoint point);

// The sides that a zone is dragged by; none for the caption and for zones that nothing is dragged by.
Qt::Edges EdgesOf(FrameZone zone);

// The frame's rectangle on the screen that a drag proposes: the one at the press plus the way of the mouse
// since then, in both axes or at the sides that the zone names. A side stops where the frame would get
// smaller than "minimum". As it was for zones that nothing is dragged by.
EdgeRect DragRect(const EdgeRect& atPress, FrameZone zone, QPoint way, QSize minimum);

// The painted border: left, right and bottom strip, in this order, below the caption.
std::vector<EdgeRect> BorderStrips(const FrameShape& shape);

struct GripPart {
    EdgeRect rect;
    bool outline;  // black; else three quarters of the border's colour
};

// The marks in the strips near the lower corners, 13 to 18 pixels from them: a block of four lines between
// two outlines each. Empty for a frame that can't be sized.
std::vector<GripPart> GripParts(const FrameShape& shape);

}  // namespace pixelgrove
