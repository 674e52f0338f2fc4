#include "platform/KeyPlaces.h"

#include <string_view>

namespace pixelgrove {

std::optional<int> MarkKeyAt(uint32_t keyCode) {
    for (const MarkKey& mark : kMarkKeys)
        if (mark.keyCode == keyCode) return mark.virtualKey;
    if (keyCode == kExtraKeyCode) return kExtraKey;
    return {};
}

std::optional<int> DigitKeyAt(uint32_t keyCode) {
    constexpr uint32_t kOne = 10, kZero = 19;
    if (keyCode < kOne || keyCode > kZero) return {};
    return '0' + int(keyCode - kOne + 1) % 10;
}

std::optional<int> LetterKeyAt(uint32_t keyCode) {
    struct Row {
        uint32_t first;
        std::string_view letters;
    };
    constexpr Row kRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    for (const Row& row : kRows)
        if (keyCode >= row.first && keyCode < row.first + row.letters.size())
            return row.letters[keyCode - row.first];
    return {};
}

}  // namespace pixelgrove
