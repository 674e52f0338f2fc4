#include "recording/keyboard/KeyboardKeys.h"

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <QString>
#include <bitset>
#include <utility>

#include "platform/CodePage.h"
#include "platform/KeyPlaces.h"
#include "platform/Owned.h"

namespace pixelgrove {

namespace {

struct NamedKey {
    uint32_t virtualKey;
    QStringView name;
    xkb_keysym_t symbol;
};

constexpr NamedKey kNamedKeys[] = {
    {8, u"Backspace", XKB_KEY_BackSpace},
    {9, u"Tab", XKB_KEY_Tab},
    {12, u"Clear", XKB_KEY_Clear},
    {13, u"Enter", XKB_KEY_Return},
    {kKeyShift, u"Shift", XKB_KEY_Shift_L},
    {kKeyCtrl, u"Ctrl", XKB_KEY_Control_L},
    {kKeyAlt, u"Alt", XKB_KEY_Alt_L},
    {19, u"Pause", XKB_KEY_Pause},
    {20, u"CapsLock", XKB_KEY_Caps_Lock},
    {27, u"Esc", XKB_KEY_Escape},
    {32, u"Space", XKB_KEY_space},
    {33, u"PageUp", XKB_KEY_Prior},
    {34, u"PageDown", XKB_KEY_Next},
    {35, u"End", XKB_KEY_End},
    {36, u"Home", XKB_KEY_Home},
    {37, u"Left", XKB_KEY_Left},
    {38, u"Up", XKB_KEY_Up},
    {39, u"Right", XKB_KEY_Right},
    {40, u"Down", XKB_KEY_Down},
    {44, u"PrintScreen", XKB_KEY_Print},
    {45, u"Insert", XKB_KEY_Insert},
    {46, u"Delete", XKB_KEY_Delete},
    {47, u"Help", XKB_KEY_Help},
    {kKeyWindows, u"Windows", XKB_KEY_Super_L},
    {92, u"RightWindows", XKB_KEY_Super_R},
    {93, u"Menu", XKB_KEY_Menu},
    {106, u"NumMultiply", XKB_KEY_KP_Multiply},
    {107, u"NumPlus", XKB_KEY_KP_Add},
    {109, u"NumMinus", XKB_KEY_KP_Subtract},
    {110, u"NumDecimal", XKB_KEY_KP_Decimal},
    {110, u"NumDecimal", XKB_KEY_KP_Separator},
    {111, u"NumDivide", XKB_KEY_KP_Divide},
    {144, u"NumLock", XKB_KEY_Num_Lock},
    {145, u"ScrollLock", XKB_KEY_Scroll_Lock},
    {161, u"RightShift", XKB_KEY_Shift_R},
    {163, u"RightCtrl", XKB_KEY_Control_R},
    {165, u"RightAlt", XKB_KEY_Alt_R},
    {165, u"AltGr", XKB_KEY_ISO_Level3_Shift},
};

// What dead keys would write, in the order of their symbols from this one on.
constexpr xkb_keysym_t kFirstDead = XKB_KEY_dead_grave;
constexpr QStringView kDeadMarks = u"`´^~¯˘˙¨°˝ˇ¸˛";

class KeyFinder {
  public:
    KeyFinder(xkb_keymap& keymap, uint32_t layout) : keymap_(keymap), layout_(layout) {
        const xkb_layout_index_t layouts = xkb_keymap_num_layouts(&keymap);
        for (xkb_layout_index_t i = 0; i < layouts && !HasLatin(layout_); ++i)
            if (HasLatin(i)) layout_ = i;
        hasLatin_ = HasLatin(layout_);
    }

    bool HasLatin() const { return hasLatin_; }

    // What the key writes without any other; 0 for nothing that could be read.
    char32_t CharacterOf(xkb_keycode_t key) const {
        const xkb_keysym_t symbol = SymbolOf(key, layout_, 0);
        if (symbol >= kFirstDead && symbol < kFirstDead + kDeadMarks.size())
            return kDeadMarks[symbol - kFirstDead].unicode();
        const char32_t character = xkb_keysym_to_utf32(symbol);
        return character > U' ' && character != 0x7F ? character : 0;
    }

    // 0 when no key is it: on this layout without another key, else on any, else with another key.
    xkb_keycode_t KeyOfSymbol(xkb_keysym_t symbol) const {
        const auto find = [this](auto&& matches) {
            const xkb_keycode_t end = EndCode();
            for (xkb_keycode_t key = FirstCode(); key < end; ++key)
                if (matches(key)) return key;
            return xkb_keycode_t(0);
        };
        if (const auto key = find([&](xkb_keycode_t k) { return SymbolOf(k, layout_, 0) == symbol; }))
            return key;
        return find([&](xkb_keycode_t k) {
            for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(&keymap_, k);
                 ++layout)
                for (xkb_level_index_t level = 0; level < xkb_keymap_num_levels_for_key(&keymap_, k, layout);
                     ++level)
                    if (SymbolOf(k, layout, level) == symbol) return true;
            return false;
        });
    }

    xkb_keycode_t FirstCode() const { return xkb_keymap_min_keycode(&keymap_); }
    // Behind the last; the server presses no key beyond 255.
    xkb_keycode_t EndCode() const {
        return std::min<xkb_keycode_t>(xkb_keymap_max_keycode(&keymap_), 255) + 1;
    }

  private:
    xkb_keysym_t SymbolOf(xkb_keycode_t key, xkb_layout_index_t layout, xkb_level_index_t level) const {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(&keymap_, key, layout, level, &symbols);
        return count == 1 ? symbols[0] : xkb_keysym_t(XKB_KEY_NoSymbol);
    }

    bool HasLatin(xkb_layout_index_t layout) const {
        std::bitset<26> letters;
        for (xkb_keycode_t key = FirstCode(); key < EndCode(); ++key) {
            const xkb_keysym_t symbol = SymbolOf(key, layout, 0);
            if (symbol >= XKB_KEY_a && symbol <= XKB_KEY_z) letters.set(symbol - XKB_KEY_a);
        }
        return letters.all();
    }

    xkb_keymap& keymap_;
    xkb_layout_index_t layout_;
    bool hasLatin_ = false;
};

class KeyTable {
  public:
    bool Has(uint32_t virtualKey) const { return keys_.keyCodes[virtualKey] != 0; }
    bool IsUsed(xkb_keycode_t key) const { return used_.test(key); }
    // Nothing for a key code of 0, and for a row that has its key.
    void Set(uint32_t virtualKey, const QString& name, xkb_keycode_t key) {
        if (key == 0 || key > 255 || Has(virtualKey)) return;
        keys_.names[virtualKey] = {name, virtualKey};
        keys_.keyCodes[virtualKey] = uint8_t(key);
        used_.set(key);
    }
    KeyboardKeys Take() { return std::move(keys_); }

  private:
    KeyboardKeys keys_;
    std::bitset<256> used_;
};

QString NameOf(char32_t character) {
    switch (character) {
        case U'+':
            return QStringLiteral("Plus");
        case U'-':
            return QStringLiteral("Minus");
        case U'.':
            return QStringLiteral("Period");
        case U'<':
            return QStringLiteral("Less");
        default:
            break;
    }
    const QString name = QString::fromUcs4(&character, 1);
    const QString upper = name.toUpper();
    return upper.size() == name.size() ? upper : name;
}

void AddLetters(const KeyFinder& finder, KeyTable& table) {
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        xkb_keycode_t key = 0;
        if (finder.HasLatin())
            key = finder.KeyOfSymbol(XKB_KEY_a + letter - u'A');
        else
            for (xkb_keycode_t k = finder.FirstCode(); k < finder.EndCode() && key == 0; ++k)
                if (LetterKeyAt(k) == letter) key = k;
        table.Set(letter, QString(letter), key);
    }
}

void AddDigits(const KeyFinder& finder, KeyTable& table) {
    for (xkb_keycode_t key = finder.FirstCode(); key < finder.EndCode(); ++key)
        if (const auto digit = DigitKeyAt(key)) table.Set(uint32_t(*digit), QString(QChar(*digit)), key);
}

// The mark that a US keyboard has on the key; 0 for a key that isn't one of these.
char32_t UsMarkOf(uint32_t virtualKey) {
    for (const MarkKey& mark : kMarkKeys)
        if (mark.virtualKey == int(virtualKey)) return mark.character;
    return 0;
}

void AddMark(const KeyFinder& finder, KeyTable& table, uint32_t virtualKey, xkb_keycode_t key) {
    char32_t character = finder.CharacterOf(key);
    if (character == 0 || CountLackingCharacters(QString::fromUcs4(&character, 1)) > 0)
        character = UsMarkOf(virtualKey);
    if (character != 0) table.Set(virtualKey, NameOf(character), key);
}

void AddMarks(const KeyFinder& finder, KeyTable& table) {
    // By what is on them, among the keys that write letters and marks.
    const auto isFree = [&](xkb_keycode_t key) {
        return !table.IsUsed(key) && (MarkKeyAt(key) || LetterKeyAt(key));
    };
    for (const MarkKey& mark : kMarkKeys)
        for (xkb_keycode_t key = finder.FirstCode(); key < finder.EndCode(); ++key)
            if (isFree(key) && finder.CharacterOf(key) == mark.character)
                AddMark(finder, table, uint32_t(mark.virtualKey), key);
    // By place, and what is left by any code that is.
    for (const bool byPlace : {true, false}) {
        for (xkb_keycode_t key = finder.FirstCode(); key < finder.EndCode(); ++key) {
            if (!isFree(key)) continue;
            if (byPlace) {
                if (const auto mark = MarkKeyAt(key)) AddMark(finder, table, uint32_t(*mark), key);
                continue;
            }
            for (const MarkKey& mark : kMarkKeys)
                if (!table.IsUsed(key)) AddMark(finder, table, uint32_t(mark.virtualKey), key);
        }
    }
}

}  // namespace

KeyboardKeys KeysOf(xkb_keymap& keymap, uint32_t layout) {
    const KeyFinder finder(keymap, layout);
    KeyTable table;
    for (const NamedKey& named : kNamedKeys)
        table.Set(named.virtualKey, named.name.toString(), finder.KeyOfSymbol(named.symbol));
    for (uint32_t i = 0; i < 10; ++i)
        table.Set(96 + i, QStringLiteral("Num%1").arg(i), finder.KeyOfSymbol(XKB_KEY_KP_0 + i));
    for (uint32_t i = 0; i < 24; ++i)
        table.Set(112 + i, QStringLiteral("F%1").arg(i + 1), finder.KeyOfSymbol(XKB_KEY_F1 + i));
    AddLetters(finder, table);
    AddDigits(finder, table);
    AddMarks(finder, table);
    return table.Take();
}

std::optional<KeyboardKeys> ReadKeyboard(xcb_connection_t& connection) {
    if (!xkb_x11_setup_xkb_extension(&connection, XKB_X11_MIN_MAJOR_XKB_VERSION,
                                     XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                     nullptr, nullptr, nullptr, nullptr))
        return {};
    const int32_t device = xkb_x11_get_core_keyboard_device_id(&connection);
    if (device < 0) return {};
    const Owned<xkb_context, xkb_context_unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context) return {};
    const Owned<xkb_keymap, xkb_keymap_unref> keymap(
        xkb_x11_keymap_new_from_device(context.get(), &connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) return {};
    const Owned<xkb_state, xkb_state_unref> state(
        xkb_x11_state_new_from_device(keymap.get(), &connection, device));
    if (!state) return {};
    return KeysOf(*keymap, xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE));
}

const KeyNameTable& KeyNames() {
    static const KeyNameTable names = [] {
        const Owned<xcb_connection_t, xcb_disconnect> connection(xcb_connect(nullptr, nullptr));
        if (xcb_connection_has_error(connection.get()) != 0) return KeyNameTable();
        std::optional<KeyboardKeys> keys = ReadKeyboard(*connection);
        return keys ? std::move(keys->names) : KeyNameTable();
    }();
    return names;
}

}  // namespace pixelgrove
