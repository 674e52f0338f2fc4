#include "windows/DialogScaling.h"

#include <algorithm>
#include <cmath>

namespace pixelgrove {

namespace {

// The width of a character for a height, when none is known.
constexpr double kWidthOfHeight = 0.45;

// The part of the available height that a font gets that would be too high.
constexpr double kPartOfHeight = 0.8;

float AxisScale(int size, int64_t base) {
    return base == 0 ? 1.0f : float(size) / float(base);
}

int WidthFor(int height) {
    return std::abs(RoundToInt(height * kWidthOfHeight));
}

int Scaled(int value, float scale) {
    return RoundToInt(double(value) * double(scale));
}

int Unscaled(int value, float scale) {
    return scale == 0 ? value : RoundToInt(value / double(scale));
}

}  // namespace

EdgeRect DialogBaseRect(QSize client) {
    return {0, 0, Saturate(int64_t{client.width()} + kDialogFrame),
            Saturate(int64_t{client.height()} + kDialogFrame)};
}

DialogScale ScaleAt(QSize client, const EdgeRect& base) {
    return {AxisScale(client.width(), base.Width()), AxisScale(client.height(), base.Height())};
}

bool NeedsRescale(QSize client, const EdgeRect& base) {
    return EdgeRect{0, 0, client.width(), client.height()} != base;
}

EdgeRect ControlBaseRect(const EdgeRect& rect, DialogScale scale) {
    return {Unscaled(rect.left, scale.x), Unscaled(rect.top, scale.y), Unscaled(rect.right, scale.x),
            Unscaled(rect.bottom, scale.y)};
}

EdgeRect ScaledControlRect(const EdgeRect& base, DialogScale scale, bool comboBox) {
    EdgeRect rect{Scaled(base.left, scale.x), Scaled(base.top, scale.y), Scaled(base.right, scale.x),
                  Scaled(base.bottom, scale.y)};
    if (comboBox) rect.bottom = Saturate(rect.bottom + rect.Width());
    return rect;
}

int ComboListWidth(int controlWidth) {
    return RoundToInt(controlWidth * 1.5);
}

FontSize BaseFontSize(int height) {
    return {height, WidthFor(height)};
}

FontSize ScaledFontSize(const FontSize& base, const EdgeRect& windowBase, DialogScale scale, FontMode mode) {
    const double baseHeight = std::abs(double(base.height));
    FontSize font;
    font.height = -RoundToInt(baseHeight * scale.y);
    font.width = base.width != 0 ? Scaled(base.width, scale.x) : WidthFor(font.height);

    const double available = double(windowBase.Height()) * scale.y;
    const double needed = std::max(std::abs(double(font.height)), baseHeight * scale.y);
    if (needed > available) {
        const double down = available / needed * kPartOfHeight;
        font.height = RoundToInt(font.height * down);
        font.width = RoundToInt(font.width * down);
    }

    switch (mode) {
        case FontMode::NaturalWidth:
            font.width = 0;
            break;
        case FontMode::MeanHeight:
            font.height = -RoundToInt(baseHeight * (double(scale.x) + scale.y) / 2);
            break;
        case FontMode::SmallerHeight:
            font.height = -RoundToInt(baseHeight * std::min(scale.x, scale.y));
            break;
        case FontMode::NaturalWidthWhenWider:
            if (scale.x > scale.y) font.width = 0;
            break;
    }
    return font;
}

}  // namespace pixelgrove
