#include <gtest/gtest.h>

#include <QKeyEvent>

#include "render/widgets/BitmapImage.h"
#include "render/widgets/VirtualKeys.h"

namespace pixelgrove {
namespace {

TEST(VirtualKeys, Codes) {
    struct Case {
        int key;
        quint32 scanCode;
        Qt::KeyboardModifiers modifiers;
        int code;
    };
    const Qt::KeyboardModifiers none, shift = Qt::ShiftModifier, pad = Qt::KeypadModifier;
    const Case cases[] = {
        {Qt::Key_A, 38, none, 65},
        {Qt::Key_A, 24, shift, 65},  // by symbol where the layout has moved the letter
        {Qt::Key_0, 19, none, 48},
        {Qt::Key_Slash, 16, shift, 55},     // German Shift 7
        {Qt::Key_Ampersand, 10, none, 49},  // French 1
        {Qt::Key_Exclam, 0, shift, 49},     // no scan code: a synthetic event
        {Qt::Key_9, 81, pad, 105},
        {Qt::Key_Comma, 91, pad, 110},
        {Qt::Key_Enter, 104, pad, 13},
        {Qt::Key_Up, 80, pad, 38},
        {Qt::Key_Backtab, 23, shift, 9},
        {Qt::Key_AltGr, 108, none, 18},
        {Qt::Key_Left, 113, none, 37},
        {Qt::Key_F12, 96, none, 123},
        {Qt::Key_Colon, 47, shift, 186},
        {Qt::Key_Question, 0, shift, 191},
        {Qt::Key_Backslash, 51, none, 220},
        {Qt::Key_Odiaeresis, 47, none, 186},
        {0x0424, 38, none, 65},  // Cyrillic, by place
        {Qt::Key_unknown, 0, none, -1},
        {Qt::Key_VolumeUp, 123, none, -1},
    };
    for (const Case& c : cases) {
        QKeyEvent event(QEvent::KeyPress, c.key, c.modifiers, c.scanCode, 0, 0);
        EXPECT_EQ(VirtualKeyOf(event), c.code) << "key " << c.key << " scan code " << c.scanCode;
    }
}

TEST(StretchedImage, TakesNearestPixelsOfEveryDepthAndRowOrder) {
    // Two by two: row in memory 0 is 10 20, row 1 is 30 40, as blue, with green and red one and two above.
    for (int depth : {8, 24, 32}) {
        for (bool bottomUp : {false, true}) {
            auto bitmap = CreateBitmap(2, 2, depth, bottomUp);
            ASSERT_TRUE(bitmap);
            for (int i = 0; i < 4; ++i) {
                for (int channel = 0; channel < depth / 8; ++channel) {
                    bitmap->Row(i / 2)[i % 2 * depth / 8 + channel] = uint8_t(10 * (i + 1) + channel);
                }
            }
            auto colour = [depth](int blue) {
                return depth == 8 ? qRgb(blue, blue, blue) : qRgb(blue + 2, blue + 1, blue);
            };
            QImage image = StretchedImage(*bitmap, 5, 4);
            ASSERT_EQ(image.size(), QSize(5, 4));
            EXPECT_EQ(image.pixel(0, 0), colour(bottomUp ? 30 : 10)) << depth;
            EXPECT_EQ(image.pixel(2, 1), colour(bottomUp ? 30 : 10)) << depth;
            EXPECT_EQ(image.pixel(3, 1), colour(bottomUp ? 40 : 20)) << depth;
            EXPECT_EQ(image.pixel(4, 2), colour(bottomUp ? 20 : 40)) << depth;
            bitmap->bits.pop_back();
            EXPECT_TRUE(StretchedImage(*bitmap, 4, 4).isNull());
        }
    }
    EXPECT_TRUE(StretchedImage(*CreateFrameBitmap(2, 2), 0, 4).isNull());
}

}  // namespace
}  // namespace pixelgrove
