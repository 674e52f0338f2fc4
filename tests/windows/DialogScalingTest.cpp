#include "windows/DialogScaling.h"

#include <gtest/gtest.h>

#include "windows/WindowsTestSupport.h"

namespace pixelgrove {
namespace {

TEST(DialogScaling, ControlsScaleWithTheClientArea) {
    const EdgeRect base = DialogBaseRect({395, 195});
    EXPECT_EQ(base, (EdgeRect{0, 0, 400, 200}));
    EXPECT_FALSE(NeedsRescale({400, 200}, base));
    EXPECT_TRUE(NeedsRescale({395, 195}, base));

    const DialogScale scale = ScaleAt({600, 100}, base);
    EXPECT_FLOAT_EQ(scale.x, 1.5f);
    EXPECT_FLOAT_EQ(scale.y, 0.5f);
    // 11 * 1.5 is 16.5, 21 * 0.5 is 10.5; -3 * 1.5 is -4.5.
    EXPECT_EQ(ScaledControlRect({11, 21, 111, 41}, scale, false), (EdgeRect{17, 11, 167, 21}));
    EXPECT_EQ(ScaledControlRect({-3, 0, 5, 2}, scale, false), (EdgeRect{-5, 0, 8, 1}));
    EXPECT_EQ(ScaledControlRect({11, 21, 111, 41}, scale, true), (EdgeRect{17, 11, 167, 171})) << "150 wide";
    EXPECT_EQ(ComboListWidth(101), 152);
    // A control that appears now, at the place of the first one.
    EXPECT_EQ(ControlBaseRect({18, 11, 168, 21}, scale), (EdgeRect{12, 22, 112, 42}));

    const DialogScale none = ScaleAt({600, 100}, {});
    EXPECT_TRUE(none.x == 1 && none.y == 1);
    EXPECT_EQ(ControlBaseRect({1, 2, 3, 4}, {0, 0}), (EdgeRect{1, 2, 3, 4}));
}

TEST(DialogScaling, FontFollows) {
    EXPECT_EQ(BaseFontSize(-11), (FontSize{-11, 5})) << "4.95";
    EXPECT_EQ(BaseFontSize(-10), (FontSize{-10, 5})) << "4.5";

    const EdgeRect dialog{0, 0, 400, 200};
    const FontSize base = BaseFontSize(-11);
    const struct {
        const char* what;
        FontSize base;
        EdgeRect window;
        DialogScale scale;
        FontMode mode;
        FontSize font;
    } rows[] = {
        {"as it was", base, dialog, {1, 1}, FontMode::NaturalWidthWhenWider, {-11, 5}},
        {"wider only", base, dialog, {2, 1}, FontMode::NaturalWidthWhenWider, {-11, 0}},
        // 11 * 1.5 is 16.5.
        {"higher only", base, dialog, {1, 1.5}, FontMode::NaturalWidthWhenWider, {-17, 5}},
        {"both", base, dialog, {1.5, 1.5}, FontMode::NaturalWidthWhenWider, {-17, 8}},
        {"positive height", {11, 5}, dialog, {1, 1}, FontMode::NaturalWidthWhenWider, {-11, 5}},
        // 22 * 0.45 is 9.9.
        {"no width known", {-11, 0}, dialog, {1, 2}, FontMode::NaturalWidthWhenWider, {-22, 10}},
        {"always natural", base, dialog, {1, 2}, FontMode::NaturalWidth, {-22, 0}},
        // 11 * 1.25 is 13.75.
        {"mean", base, dialog, {0.5, 2}, FontMode::MeanHeight, {-14, 3}},
        // 11 * 0.5 is 5.5.
        {"smaller", base, dialog, {0.5, 2}, FontMode::SmallerHeight, {-6, 3}},
        {"as high as its window", base, {0, 0, 50, 11}, {1, 1}, FontMode::NaturalWidthWhenWider, {-11, 5}},
        // 10 / 20 * 0.8 is 0.4.
        {"too high", {-20, 9}, {0, 0, 50, 10}, {1, 1}, FontMode::NaturalWidthWhenWider, {-8, 4}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ScaledFontSize(row.base, row.window, row.scale, row.mode), row.font) << row.what;
}

}  // namespace
}  // namespace pixelgrove
