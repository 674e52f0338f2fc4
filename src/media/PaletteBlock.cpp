#include "media/PaletteBlock.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/Random.h"

namespace pixelgrove {

namespace {

// From 0 to 1.
double RandomFraction() {
    return double(SystemRandom32()) / double(UINT32_MAX);
}

}  // namespace

void UnpackPalette(const PaletteBlock& block, PaletteTable& table) {
    const int count = std::clamp(block.count, 0, kMaxPaletteColours);
    for (int i = 0; i < count; ++i) {
        table.colours[size_t(i)] =
            uint32_t(block.red[i]) << 16 | uint32_t(block.green[i]) << 8 | uint32_t(block.blue[i]);
    }
    table.count = uint32_t(count);
    ++table.serial;
}

void FillDefaultPalette(PaletteTable& table) {
    struct Curve {
        double waves = 1 + std::floor(RandomFraction() * 4);  // whole ones: the table's ends meet
        double phase = RandomFraction();
    } const curves[3];
    for (size_t i = 0; i < table.colours.size(); ++i) {
        uint32_t colour = 0;
        for (const Curve& curve : curves) {
            const double turn = curve.waves * double(i) / double(table.colours.size()) + curve.phase;
            const double level = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * turn);
            colour = colour << 8 | uint32_t(std::lround(level * 255));
        }
        table.colours[i] = colour;
    }
    table.count = kMaxPaletteColours;
    ++table.serial;
}

}  // namespace pixelgrove
