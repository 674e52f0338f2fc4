#include "render/widgets/VirtualKeys.h"

#include <QKeyEvent>
#include <string_view>

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

// Position in `keys` looked up in `codes` of the same length.
int LookUp(std::string_view keys, const int* codes, int key) {
    if (key <= 0 || key > 127) return -1;
    size_t place = keys.find(char(key));
    return place == std::string_view::npos ? -1 : codes[place];
}

constexpr int kPunctuationCodes[] = {186, 187, 188, 189, 190, 191, 192, 219, 220, 221, 222};

// X key codes number the keys of a PC keyboard by place; these are the rows as a US keyboard has them.
constexpr int kDigitRow = 10;

int PunctuationByPlace(quint32 scanCode) {
    switch (scanCode) {
        case 47:
            return 186;
        case 21:
            return 187;
        case 59:
            return 188;
        case 20:
            return 189;
        case 60:
            return 190;
        case 61:
            return 191;
        case 49:
            return 192;
        case 34:
            return 219;
        case 51:
            return 220;
        case 35:
            return 221;
        case 48:
            return 222;
        case 94:
            return 226;  // the extra key beside the left Shift
        default:
            return -1;
    }
}

int LetterByPlace(quint32 scanCode) {
    struct Row {
        quint32 first;
        std::string_view letters;
    };
    constexpr Row kRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    for (const Row& row : kRows) {
        if (scanCode >= row.first && scanCode < row.first + row.letters.size()) {
            return row.letters[scanCode - row.first];
        }
    }
    return -1;
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
    if (scanCode >= kDigitRow && scanCode < kDigitRow + 10) return '0' + int(scanCode - kDigitRow + 1) % 10;
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return key;
    code = LookUp(";=,-./`[\\]'", kPunctuationCodes, key);
    if (code < 0) code = PunctuationByPlace(scanCode);
    if (code < 0) code = LookUp(":+<_>?~{|}\"", kPunctuationCodes, key);
    if (code < 0) {
        constexpr int kDigitCodes[] = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'};
        code = LookUp(")!@#$%^&*(", kDigitCodes, key);
    }
    // Layouts without Latin letters.
    if (code < 0) code = LetterByPlace(scanCode);
    return code;
}

}  // namespace pixelgrove
