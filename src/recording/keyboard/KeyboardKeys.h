// The keys of the user's keyboard: their names by its layout, and the X key codes that press them.
//
// Names have no '+', '-', '.', '<' or blank in them, at which texts of combinations are cut and their storage
// ends: such a mark's key is called "Plus", "Minus", "Period" or "Less". Main thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "recording/KeyCombos.h"

struct xcb_connection_t;
struct xkb_keymap;

namespace pixelgrove {

struct KeyboardKeys {
    KeyNameTable names;
    std::array<uint8_t, 256> keyCodes{};  // by virtual key; 0 for one that the keyboard lacks
};

// The keys by what this layout of the keymap writes on them, or where it has no Latin letters and another one
// does, by that. Letters go by what is on them, digits by place, marks by what is on them where a US keyboard
// has that too, else by place. Without any Latin letter letters go by place too, and a mark that the
// program's code page lacks is called what a US keyboard has there.
KeyboardKeys KeysOf(xkb_keymap& keymap, uint32_t layout);

// As the server's keyboard is now; nothing when the server doesn't tell.
std::optional<KeyboardKeys> ReadKeyboard(xcb_connection_t& connection);

// The names as they are when this is first called, by the display of the environment. None without one.
const KeyNameTable& KeyNames();

}  // namespace pixelgrove
