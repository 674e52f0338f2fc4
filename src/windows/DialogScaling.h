// The arithmetic of scalable dialogs: when a dialog's client area changes, its controls and their font scale
// with it. Sizes in pixels; every rounding is half away from zero. No widgets here. Any thread.
#pragma once

#include <QSize>

#include "windows/EdgeRect.h"

namespace pixelgrove {

// Pixels by which a dialog's base size is taken larger than its client area: the room of its own frame.
inline constexpr int kDialogFrame = 5;

struct DialogScale {
    float x = 1;
    float y = 1;
};

// A font as it is made: a negative height is the characters' height without the leading, a width of 0 is the
// font's natural one.
struct FontSize {
    int height = 0;
    int width = 0;
    bool operator==(const FontSize&) const = default;
};

// What of the scale a font follows.
enum class FontMode {
    NaturalWidth = 1,          // height from the vertical scale, natural width
    MeanHeight = 2,            // height from the mean of both scales
    SmallerHeight = 3,         // height from the smaller scale
    NaturalWidthWhenWider = 4  // natural width when stretched more in x than in y; all dialogs use this
};

// The client rectangle at the base scale, grown by the frame at right and bottom.
EdgeRect DialogBaseRect(QSize client);

// The scale at a client size. An axis in which the base has no extent has the scale 1.
DialogScale ScaleAt(QSize client, const EdgeRect& base);

// False when the client rectangle is the base rectangle itself: then nothing is done and the last scale
// stays.
bool NeedsRescale(QSize client, const EdgeRect& base);

// The base rectangle of a control that appeared when the dialog had this scale: its own, divided by it.
EdgeRect ControlBaseRect(const EdgeRect& rect, DialogScale scale);

// Where a control goes: all four sides scaled. A combo box gets its width added to its height, for its list.
EdgeRect ScaledControlRect(const EdgeRect& base, DialogScale scale, bool comboBox);

// The width of a combo box's opened list: one and a half times the control's.
int ComboListWidth(int controlWidth);

// How many entries that list shows at least.
inline constexpr int kComboVisibleEntries = 8;

// The base font for a font of that height: its width is 0.45 times the height.
FontSize BaseFontSize(int height);

// The font at a scale, its height negative. A font higher than the scaled base rectangle of its window is
// brought down to 0.8 of that height, and its width with it; the mode is applied after that.
FontSize ScaledFontSize(const FontSize& base, const EdgeRect& windowBase, DialogScale scale,
                        FontMode mode = FontMode::NaturalWidthWhenWider);

}  // namespace pixelgrove
