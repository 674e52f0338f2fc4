#include "look/widgets/Theme.h"

#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

UiColours Pair(uint32_t window, uint32_t text) {
    UiColours colours;
    colours.values[size_t(UiColour::WindowBackground)] = window;
    colours.values[size_t(UiColour::WindowText)] = text;
    return colours;
}

struct ColourPair {
    const char* name;
    uint32_t window, text;
};

const ColourPair kPairs[] = {
    {"built-in", 0x000000, 0x8cffff},
    {"white on black", 0x000000, 0xffffff},
    {"black on white", 0xffffff, 0},
    {"barely 7 to 1, dark", 0x000000, 0x959595},
    {"barely 7 to 1, light", 0xffffff, 0x595959},
    {"blue ground", 0x600000, 0xd0ffff},
    {"saturated", 0x000040, 0x00ff00},
};

TEST(ThemeTest, EveryReadablePairGivesReadableMixtures) {
    for (const ColourPair& pair : kPairs) {
        SCOPED_TRACE(pair.name);
        const ThemeColours theme = MakeThemeColours(Pair(pair.window, pair.text));
        ASSERT_GE(Contrast(theme.window, theme.text), 7.0);
        const QColor grounds[] = {theme.field,      theme.panel,       theme.button,       theme.buttonHover,
                                  theme.buttonDown, theme.activeFrame, theme.inactiveFrame};
        for (const QColor& ground : grounds)
            EXPECT_GE(Contrast(theme.text, ground), 4.5) << ground.name().toStdString();
        EXPECT_GE(Contrast(theme.accentText, theme.accent), 4.5);
        // Disabled text: weaker than the text, yet legible where it stands.
        for (const QColor& ground : {theme.window, theme.field, theme.panel, theme.button}) {
            EXPECT_GE(Contrast(theme.faintText, ground), 3.0) << ground.name().toStdString();
            EXPECT_LT(Contrast(theme.faintText, ground), 0.75 * Contrast(theme.text, ground));
        }
        EXPECT_NE(theme.button, theme.window);
        EXPECT_NE(theme.activeFrame, theme.inactiveFrame);
    }
}

TEST(ThemeTest, BlueStandsFirst) {
    EXPECT_EQ(FromBgr(0x8cffff), QColor(255, 255, 140));
    EXPECT_EQ(FromBgr(0x0000ff), QColor(255, 0, 0));
    EXPECT_EQ(FromBgr(0xff112233), QColor(0x33, 0x22, 0x11));
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-9);
}

}  // namespace
}  // namespace pixelgrove
