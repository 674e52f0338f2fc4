// PaletteBlock: the colour map record that an outside palette tool leaves in shared memory, and
// PaletteTable, the program's packed copy that the renderer turns into a one-row texture.
#pragma once

#include <array>
#include <cstdint>

#include "platform/SynchronizedValue.h"

namespace pixelgrove {

constexpr int kMaxPaletteColours = 2048;
constexpr const char* kPaletteMemoryName = "/CMAPSharedMemoryObject";

// Exactly the layout of the shared object.
struct PaletteBlock {
    int32_t count;  // colours in use, at most kMaxPaletteColours
    int32_t reserved;
    uint8_t red[kMaxPaletteColours];
    uint8_t green[kMaxPaletteColours];
    uint8_t blue[kMaxPaletteColours];
};
static_assert(sizeof(PaletteBlock) == 6152);

struct PaletteTable {
    std::array<uint32_t, kMaxPaletteColours> colours{};  // 0x00RRGGBB
    uint32_t count = 0;                                  // entries in use
    uint64_t serial = 0;                                 // grows with each change
};

// Written by the main thread, read by the render thread.
using SharedPalette = SynchronizedValue<PaletteTable>;

// Packs the block into the table. A count outside 0..kMaxPaletteColours is clamped: the block is written by
// another process.
void UnpackPalette(const PaletteBlock& block, PaletteTable& table);

// Fills the table with kMaxPaletteColours colours along smooth curves that are drawn afresh at each call:
// what the program starts with.
void FillDefaultPalette(PaletteTable& table);

}  // namespace pixelgrove
