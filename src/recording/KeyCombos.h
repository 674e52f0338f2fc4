// Key combinations as text: key names joined by '+', as "Ctrl+Alt+O". Their parser, and what makes one of
// what a user types.
//
// Keys are virtual key codes, 0..255. Ctrl, Alt, Shift and Windows (or Win) have these names on every
// keyboard, all others those of the table. Pure; any thread.
#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace pixelgrove {

inline constexpr uint32_t kKeyShift = 16;
inline constexpr uint32_t kKeyCtrl = 17;
inline constexpr uint32_t kKeyAlt = 18;
inline constexpr uint32_t kKeyWindows = 91;

// Row i is the key with the code i; whoever knows the keyboard fills it. A key that the keyboard lacks has an
// empty name and the code 0.
struct KeyName {
    QString name;
    uint32_t virtualKey = 0;
};
using KeyNameTable = std::array<KeyName, 256>;

// The codes of the keys in the order of the text; names are matched ignoring case. '+' always separates: for
// each name that is missing beside one there is a 0 at the end. Nothing for an empty text, one longer than
// kMaxKeyComboLength, and one with a name that no key has.
std::optional<std::vector<uint32_t>> ParseKeyCombo(const QString& text, const KeyNameTable& names);

// The name that a typed one, which isn't empty, is most like; a single character stays itself, in upper case.
// At most 255 code units, "???" when the table is empty.
QString NormaliseKeyName(const QString& token, const KeyNameTable& names);

// What an edit box makes of the text typed into it: the names of its keys, joined by '+', in at most
// kMaxTypedCombo code units. Also '-', '.' and blanks separate, before the second key most other marks do.
inline constexpr int kMaxTypedCombo = 40;
QString NormaliseKeyCombo(const QString& text, const KeyNameTable& names);

// What it takes to make the target of the source, ignoring case: 5 for each character to put in or to
// replace, 4 to leave one out or to swap two neighbours. A swap counts only where the second of the two is in
// upper case in the target, or has no case.
int KeyNameDistance(QStringView source, QStringView target);

}  // namespace pixelgrove
