#include "windows/widgets/Theme.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QHash>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "support/DisplayTest.h"
#include "windows/widgets/GroupFrame.h"

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
    {"mid grey ground", 0x545454, 0xffffff},
    {"blue ground", 0x600000, 0xd0ffff},
    {"light blue ground", 0xfff0e0, 0x400000},
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

TEST(ThemeTest, WeakAndEqualPairsAreNoWorseThanTheyAre) {
    const ThemeColours weak = MakeThemeColours(Pair(0x404040, 0x909090));
    EXPECT_GE(Contrast(weak.text, weak.button), 0.69 * Contrast(weak.text, weak.window));
    const ThemeColours none = MakeThemeColours(Pair(0x123456, 0x123456));
    EXPECT_EQ(none.faintText, none.window);
}

TEST(ThemeTest, BlueStandsFirst) {
    EXPECT_EQ(FromBgr(0x8cffff), QColor(255, 255, 140));
    EXPECT_EQ(FromBgr(0x0000ff), QColor(255, 0, 0));
    EXPECT_EQ(FromBgr(0xff112233), QColor(0x33, 0x22, 0x11));
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-9);
}

class AppliedThemeTest : public DisplayTest {
  protected:
    void TearDown() override {
        if (qApp) ApplyTheme(*qApp, UiColours());
        DisplayTest::TearDown();
    }
};

// Scaled forms have controls of a few pixels.
TEST_F(AppliedThemeTest, ControlsOfHalfTheirSizeStillShowTheirText) {
    QFont font = FormFont();
    font.setPixelSize(6);
    QPushButton button(QStringLiteral("Start"));
    QLineEdit edit(QStringLiteral("0.03"));
    for (QWidget* widget : {static_cast<QWidget*>(&button), static_cast<QWidget*>(&edit)}) {
        widget->setFont(font);
        widget->resize(35, 11);
        const QImage small = widget->grab().toImage();
        button.setText(QString());
        edit.setText(QString());
        EXPECT_NE(small, widget->grab().toImage());
        button.setText(QStringLiteral("Start"));
        edit.setText(QStringLiteral("0.03"));
        // The same text in more room has no more ink: nothing was cut off.
        const auto ink = [](const QImage& image) {
            const QColor text = Theme().text;
            double sum = 0;
            for (int y = 2; y < image.height() - 2; ++y)
                for (int x = 2; x < image.width() - 2; ++x)
                    sum += image.pixelColor(x, y).redF() > 0.4 * text.redF();
            return sum;
        };
        widget->resize(70, 22);
        EXPECT_NEAR(ink(widget->grab().toImage()), ink(small), 6);
    }
}

}  // namespace
}  // namespace pixelgrove
