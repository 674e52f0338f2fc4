#include "windows/widgets/KeyPositions.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>
#include <bitset>
#include <utility>

#include "windows/widgets/XServer.h"

// Qt's own entry for keys, which goes through the shortcuts; declared for its test library alone.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text, bool autoRepeat,
                                    ushort count);
QT_END_NAMESPACE

namespace pixelgrove {

namespace {

struct KeyRow {
    quint32 first;
    const char* keys;
};
constexpr KeyRow kRows[] = {{24, "QWERTYUIOP[]"}, {38, "ASDFGHJKL;'`"}, {51, "\\ZXCVBNM,./"}};

// The toolkit's numbers for keys are code points below this.
constexpr int kFirstSpecialKey = 0x01000000;

bool IsForeignLetter(const QKeyEvent& event) {
    constexpr Qt::KeyboardModifiers kOfShortcuts = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return (event.modifiers() & kOfShortcuts) && event.key() > 0x7f && event.key() < kFirstSpecialKey;
}

}  // namespace

int UsKeyAt(quint32 scanCode) {
    for (const KeyRow& row : kRows) {
        const quint32 place = scanCode - row.first;  // beyond all rows for a code before this one
        if (place < qstrlen(row.keys)) return row.keys[place];
    }
    return 0;
}

bool KeyboardHasLatin() {
    xcb_connection_t* connection = XConnection();
    if (!connection) return true;
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const xcb_keycode_t first = setup->min_keycode;
    const auto asked = xcb_get_keyboard_mapping(connection, first, uint8_t(setup->max_keycode - first + 1));
    const ReplyOf<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(connection, asked, nullptr));
    if (!mapping) return true;
    std::bitset<26> letters;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int i = 0; i < xcb_get_keyboard_mapping_keysyms_length(mapping.get()); ++i)
        if (symbols[i] >= 'a' && symbols[i] <= 'z') letters.set(symbols[i] - 'a');
    return letters.all();
}

KeyPositions::KeyPositions(QObject* parent, std::function<bool()> hasLatin)
    : QObject(parent), hasLatin_(std::move(hasLatin)) {
    qApp->installEventFilter(this);
}

bool KeyPositions::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWindowType()) return false;
    const auto& key = *static_cast<const QKeyEvent*>(event);
    if (!IsForeignLetter(key)) return false;
    // A picture has no shortcuts, and its shader is to see each release with its press.
    auto* window = static_cast<QWindow*>(watched);
    const int usKey = UsKeyAt(key.nativeScanCode());
    if (usKey == 0 || !QWidget::find(window->winId()) || hasLatin_()) return false;
    qt_handleKeyEvent(window, QEvent::KeyPress, usKey, key.modifiers(), QString(), key.isAutoRepeat(), 1);
    return true;
}

}  // namespace pixelgrove
