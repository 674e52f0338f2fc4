#include "render/InputState.h"

#include "platform/SynchronizedValue.h"

namespace pixelgrove {

namespace {

struct KeyboardState {
    std::array<uint8_t, kKeyCodes * kKeyRows> rows{};
    std::array<bool, kKeyCodes> isDown{};
    bool changed = false;
};

SynchronizedValue<KeyboardState>& Keyboard() {
    static SynchronizedValue<KeyboardState> state;
    return state;
}

constexpr int kDownRow = 0;
constexpr int kWentDownRow = kKeyCodes;
constexpr int kToggleRow = 2 * kKeyCodes;

}  // namespace

MouseState& Mouse() {
    static MouseState state;
    return state;
}

void MousePressed(int x, int yFromTop, int clientHeight) {
    MouseState& mouse = Mouse();
    const int y = clientHeight - yFromTop;
    mouse.x = x;
    mouse.clickX = x;
    mouse.y = y;
    mouse.clickY = y;
    mouse.isDown = 1;
    mouse.justPressed = 1;
}

void MouseMoved(int x, int yFromTop, int clientHeight) {
    MouseState& mouse = Mouse();
    if (!mouse.isDown) return;
    mouse.x = x;
    mouse.y = clientHeight - yFromTop;
}

void MouseReleased() {
    Mouse().isDown = 0;
}

void KeyPressed(int keyCode) {
    if (keyCode < 0 || keyCode >= kKeyCodes) return;
    const Hold keyboard(Keyboard());
    keyboard->rows[kDownRow + keyCode] = 255;
    if (!keyboard->isDown[keyCode]) keyboard->rows[kWentDownRow + keyCode] = 255;
    keyboard->isDown[keyCode] = true;
    // Flips on auto-repeat too: shaders rely on the flicker of a held key.
    uint8_t& toggle = keyboard->rows[kToggleRow + keyCode];
    toggle = toggle < 255 ? 255 : 0;
    keyboard->changed = true;
}

void KeyReleased(int keyCode) {
    if (keyCode < 0 || keyCode >= kKeyCodes) return;
    const Hold keyboard(Keyboard());
    keyboard->rows[kDownRow + keyCode] = 0;
    keyboard->rows[kWentDownRow + keyCode] = 0;
    keyboard->isDown[keyCode] = false;
    keyboard->changed = true;
}

void ClearKeyboard() {
    const Hold keyboard(Keyboard());
    keyboard->rows.fill(0);
    keyboard->changed = true;
}

bool TakeKeyboardRows(std::array<uint8_t, kKeyCodes * kKeyRows>& rows) {
    const Hold keyboard(Keyboard());
    if (!keyboard->changed) return false;
    rows = keyboard->rows;
    keyboard->changed = false;
    return true;
}

void ReadKeyboardRows(std::array<uint8_t, kKeyCodes * kKeyRows>& rows) {
    const Hold keyboard(Keyboard());
    rows = keyboard->rows;
}

}  // namespace pixelgrove
