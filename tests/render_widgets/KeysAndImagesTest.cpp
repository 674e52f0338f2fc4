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

// The key under each X key code of a US keyboard: the code, with what the toolkit calls it alone and, where
// that differs, with Shift.
TEST(VirtualKeys, EveryKeyOfAUsKeyboard) {
    struct Key {
        quint32 scanCode;
        int code;
        int plain;
        int shifted = 0;
    };
    const Key keys[] = {
        {9, 27, Qt::Key_Escape},
        {20, 189, Qt::Key_Minus, Qt::Key_Underscore},
        {21, 187, Qt::Key_Equal, Qt::Key_Plus},
        {22, 8, Qt::Key_Backspace},
        {23, 9, Qt::Key_Tab, Qt::Key_Backtab},
        {34, 219, Qt::Key_BracketLeft, Qt::Key_BraceLeft},
        {35, 221, Qt::Key_BracketRight, Qt::Key_BraceRight},
        {36, 13, Qt::Key_Return},
        {37, 17, Qt::Key_Control},
        {47, 186, Qt::Key_Semicolon, Qt::Key_Colon},
        {48, 222, Qt::Key_Apostrophe, Qt::Key_QuoteDbl},
        {49, 192, Qt::Key_QuoteLeft, Qt::Key_AsciiTilde},
        {50, 16, Qt::Key_Shift},
        {51, 220, Qt::Key_Backslash, Qt::Key_Bar},
        {59, 188, Qt::Key_Comma, Qt::Key_Less},
        {60, 190, Qt::Key_Period, Qt::Key_Greater},
        {61, 191, Qt::Key_Slash, Qt::Key_Question},
        {62, 16, Qt::Key_Shift},
        {64, 18, Qt::Key_Alt},
        {65, 32, Qt::Key_Space},
        {66, 20, Qt::Key_CapsLock},
        {77, 144, Qt::Key_NumLock},
        {78, 145, Qt::Key_ScrollLock},
        {105, 17, Qt::Key_Control},
        {107, 44, Qt::Key_Print, Qt::Key_SysReq},
        {108, 18, Qt::Key_Alt},
        {110, 36, Qt::Key_Home},
        {111, 38, Qt::Key_Up},
        {112, 33, Qt::Key_PageUp},
        {113, 37, Qt::Key_Left},
        {114, 39, Qt::Key_Right},
        {115, 35, Qt::Key_End},
        {116, 40, Qt::Key_Down},
        {117, 34, Qt::Key_PageDown},
        {118, 45, Qt::Key_Insert},
        {119, 46, Qt::Key_Delete},
        {127, 19, Qt::Key_Pause},
        {135, 93, Qt::Key_Menu},
    };
    const auto codeOf = [](int key, quint32 scanCode, Qt::KeyboardModifiers modifiers, quint32 symbol = 0) {
        return VirtualKeyOf(QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode, symbol, 0));
    };
    for (const Key& key : keys) {
        EXPECT_EQ(codeOf(key.plain, key.scanCode, Qt::NoModifier), key.code) << key.scanCode;
        const int shifted = key.shifted ? key.shifted : key.plain;
        EXPECT_EQ(codeOf(shifted, key.scanCode, Qt::ShiftModifier), key.code) << key.scanCode;
    }
    for (int i = 0; i < 10; ++i) {
        const QByteArray shifted = ")!@#$%^&*(";
        const auto scanCode = quint32(i == 0 ? 19 : 9 + i);
        EXPECT_EQ(codeOf(Qt::Key_0 + i, scanCode, Qt::NoModifier), 48 + i);
        EXPECT_EQ(codeOf(shifted[i], scanCode, Qt::ShiftModifier), 48 + i);
        EXPECT_EQ(codeOf(Qt::Key_0 + i, 0, Qt::KeypadModifier), 96 + i);
    }
    for (int i = 0; i < 26; ++i)
        EXPECT_EQ(codeOf(Qt::Key_A + i, 0, Qt::ControlModifier), 65 + i);
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(codeOf(Qt::Key_F1 + i, 0, Qt::NoModifier), 112 + i);

    // The keypad: its operators, and what it is without Num Lock.
    const std::pair<int, int> pad[] = {
        {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107}, {Qt::Key_Minus, 109}, {Qt::Key_Period, 110},
        {Qt::Key_Slash, 111},    {Qt::Key_Enter, 13}, {Qt::Key_Home, 36},   {Qt::Key_Down, 40},
        {Qt::Key_PageUp, 33},    {Qt::Key_Clear, 12}, {Qt::Key_Insert, 45}, {Qt::Key_Delete, 46},
    };
    for (const auto& [key, code] : pad)
        EXPECT_EQ(codeOf(key, 0, Qt::KeypadModifier), code) << key;

    // One name for three keys: left and right Windows key, and Alt while Shift is down.
    EXPECT_EQ(codeOf(Qt::Key_Meta, 133, Qt::NoModifier, 0xFFEB), 91);
    EXPECT_EQ(codeOf(Qt::Key_Meta, 134, Qt::NoModifier, 0xFFEC), 92);
    EXPECT_EQ(codeOf(Qt::Key_Meta, 64, Qt::ShiftModifier, 0xFFE7), 18);
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
