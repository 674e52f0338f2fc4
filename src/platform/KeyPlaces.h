// Where the keys of a PC keyboard stand, and the virtual key codes, 0..255, that they have: letters and
// digits the codes of their characters, marks the ones here.
//
// X key codes number the keys by place, whatever the layout writes on them. Pure; any thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace pixelgrove {

struct MarkKey {
    int virtualKey;
    char16_t character;  // without Shift on a US keyboard
    char16_t shifted;    // and with it
    uint32_t keyCode;    // of the key in its place
};

inline constexpr std::array<MarkKey, 11> kMarkKeys{{{186, u';', u':', 47},
                                                    {187, u'=', u'+', 21},
                                                    {188, u',', u'<', 59},
                                                    {189, u'-', u'_', 20},
                                                    {190, u'.', u'>', 60},
                                                    {191, u'/', u'?', 61},
                                                    {192, u'`', u'~', 49},
                                                    {219, u'[', u'{', 34},
                                                    {220, u'\\', u'|', 51},
                                                    {221, u']', u'}', 35},
                                                    {222, u'\'', u'"', 48}}};

// The key between the left Shift and the letters, which a US keyboard lacks.
inline constexpr int kExtraKey = 226;
inline constexpr uint32_t kExtraKeyCode = 94;

// The virtual key in that place among the marks, in the row of digits, among the letters as a US keyboard has
// them; nothing for all other places.
std::optional<int> MarkKeyAt(uint32_t keyCode);
std::optional<int> DigitKeyAt(uint32_t keyCode);
std::optional<int> LetterKeyAt(uint32_t keyCode);

}  // namespace pixelgrove
