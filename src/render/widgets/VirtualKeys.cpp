#include "render/widgets/VirtualKeys.h"

#include <QKeyEvent>
#include <string_view>

#include "platform/KeyPlaces.h"

namespace pixelgrove {
namespace {

int NamedKey(int key) {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
    switch (key) {
        case Qt::Key_Backspace:
            return 8;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return 9;
        case Qt::Key_Clear:
            return 12;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return 13;
        case Qt::Key_Shift:
            return 16;
        case Qt::Key_Control:
            return 17;
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
            return 18;
        case Qt::Key_Pause:
            return 19;
        case Qt::Key_CapsLock:
            return 20;
        case Qt::Key_Escape:
            return 27;
        case Qt::Key_Space:
            return 32;
        case Qt::Key_PageUp:
            return 33;
        case Qt::Key_PageDown:
            return 34;
        case Qt::Key_End:
            return 35;
        case Qt::Key_Home:
            return 36;
        case Qt::Key_Left:
            return 37;
        case Qt::Key_Up:
            return 38;
        case Qt::Key_Right:
            return 39;
        case Qt::Key_Down:
            return 40;
        case Qt::Key_Print:
        case Qt::Key_SysReq:
            return 44;
        case Qt::Key_Insert:
            return 45;
        case Qt::Key_Delete:
            return 46;
        case Qt::Key_Help:
            return 47;
        case Qt::Key_Super_L:
            return 91;
        case Qt::Key_Super_R:
            return 92;
        case Qt::Key_Menu:
            return 93;
        case Qt::Key_NumLock:
            return 144;
        case Qt::Key_ScrollLock:
            return 145;
        default:
            return -1;
    }
}

int KeypadKey(int key) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return 96 + key - Qt::Key_0;
    switch (key) {
        case Qt::Key_Asterisk:
        case Qt::Key_multiply:
            return 106;
        case Qt::Key_Plus:
            return 107;
        case Qt::Key_Minus:
            return 109;
        case Qt::Key_Period:
        case Qt::Key_Comma:
            return 110;
        case Qt::Key_Slash:
        case Qt::Key_division:
            return 111;
        default:
            return -1;
    }
}

// The toolkit gives one name to both Windows keys, and to Alt while Shift is down.
int MetaKey(quint32 keySymbol) {
    constexpr quint32 kMetaLeft = 0xFFE7, kMetaRight = 0xFFE8, kSuperRight = 0xFFEC;
    if (keySymbol == kMetaLeft || keySymbol == kMetaRight) return 18;
    return keySymbol == kSuperRight ? 92 : 91;
}

// By what a US keyboard has on its marks, without Shift or with it.
int KeyOfMark(int key, char16_t MarkKey::*side) {
    for (const MarkKey& mark : kMarkKeys)
        if (key == mark.*side) return mark.virtualKey;
    return -1;
}

int DigitUnderShift(int key) {
    const size_t place =
        key > 0 && key <= 127 ? std::string_view(")!@#$%^&*(").find(char(key)) : std::string_view::npos;
    return place == std::string_view::npos ? -1 : '0' + int(place);
}

}  // namespace

int VirtualKeyOf(const QKeyEvent& event) {
    const int key = event.key();
    const quint32 scanCode = event.nativeScanCode();
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return key;
    if (key == Qt::Key_Meta) return MetaKey(event.nativeVirtualKey());
    int code = -1;
    if (event.modifiers() & Qt::KeypadModifier) code = KeypadKey(key);
    if (code < 0) code = NamedKey(key);
    if (code >= 0) return code;
    if (const auto digit = DigitKeyAt(scanCode)) return *digit;
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return key;
    code = KeyOfMark(key, &MarkKey::character);
    if (code < 0) code = MarkKeyAt(scanCode).value_or(-1);
    if (code < 0) code = KeyOfMark(key, &MarkKey::shifted);
    if (code < 0) code = DigitUnderShift(key);
    // Layouts without Latin letters.
    if (code < 0) code = LetterKeyAt(scanCode).value_or(-1);
    return code;
}

}  // namespace pixelgrove
