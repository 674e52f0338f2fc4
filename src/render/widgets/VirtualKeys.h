// Virtual key codes: the numbering of keys that shaders know from the keyboard texture.
#pragma once

class QKeyEvent;

namespace pixelgrove {

// 0..255, or -1 for a key that has no code. Letters follow the user's layout (its Latin letter), the digit
// row is taken by place, so that a shifted digit keeps its code, and punctuation by symbol, then by place.
// Any thread.
int VirtualKeyOf(const QKeyEvent& event);

}  // namespace pixelgrove
