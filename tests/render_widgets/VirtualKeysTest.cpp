#include "render/widgets/VirtualKeys.h"

#include <gtest/gtest.h>

#include <QKeyEvent>

namespace pixelgrove {
namespace {

TEST(VirtualKeys, Codes) {
    const Qt::KeyboardModifiers none, shift = Qt::ShiftModifier, pad = Qt::KeypadModifier;
    const struct {
        int key;
        quint32 scanCode;
        Qt::KeyboardModifiers modifiers;
        int code;
    } cases[] = {
        {Qt::Key_A, 38, none, 65},
        {Qt::Key_A, 24, shift, 65},         // by symbol where the layout has moved the letter
        {Qt::Key_Slash, 16, shift, 55},     // German Shift 7
        {Qt::Key_Ampersand, 10, none, 49},  // French 1
        {Qt::Key_Exclam, 0, shift, 49},     // no scan code: a synthetic event
        {Qt::Key_Comma, 91, pad, 110},
        {Qt::Key_Enter, 104, pad, 13},
        {Qt::Key_Up, 80, pad, 38},
        {Qt::Key_Backtab, 23, shift, 9},
        {Qt::Key_AltGr, 108, none, 18},
        {Qt::Key_Colon, 47, shift, 186},
        {Qt::Key_Odiaeresis, 47, none, 186},
        {0x0424, 38, none, 65},  // Cyrillic, by place
        {Qt::Key_unknown, 0, none, -1},
        {Qt::Key_VolumeUp, 123, none, -1},
    };
    for (const auto& c : cases) {
        QKeyEvent event(QEvent::KeyPress, c.key, c.modifiers, c.scanCode, 0, 0);
        EXPECT_EQ(VirtualKeyOf(event), c.code) << "key " << c.key << " scan code " << c.scanCode;
    }
}

}  // namespace
}  // namespace pixelgrove
