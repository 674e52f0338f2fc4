// MouseState and KeyboardState: what the output window's input leaves for the renderer. Process-wide.
//
// Written by the main thread (through the functions below), read by the render thread. Mouse words are
// atomic, and a view that mixes two events lasts one frame; the key rows stand behind a lock.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace pixelgrove {

struct MouseState {
    std::atomic<uint32_t> isDown{0};
    std::atomic<uint32_t> justPressed{0};  // set by main, cleared by the render thread
    std::atomic<int32_t> x{0}, y{0};       // y counts from the bottom of the client area
    std::atomic<int32_t> clickX{0}, clickY{0};
};
MouseState& Mouse();

// Client coordinates with y from the top, as window systems report them.
void MousePressed(int x, int yFromTop, int clientHeight);
void MouseMoved(int x, int yFromTop, int clientHeight);
void MouseReleased();

constexpr int kKeyCodes = 256;
constexpr int kKeyRows = 3;  // down, went down, toggle

// Rows as the keyboard texture shows them, by virtual key code.
void KeyPressed(int keyCode);  // auto-repeats too; codes outside 0..255 are ignored
void KeyReleased(int keyCode);
void ClearKeyboard();  // zeroes the rows
// Copies the rows when they changed since the last call; false when not. Render thread.
bool TakeKeyboardRows(std::array<uint8_t, kKeyCodes * kKeyRows>& rows);
// Copies the rows as they are.
void ReadKeyboardRows(std::array<uint8_t, kKeyCodes * kKeyRows>& rows);

}  // namespace pixelgrove
