// Palette files: their three forms, told apart by the first four bytes, and the stretching of a palette to
// another number of colours. Any thread.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <span>

#include "media/PaletteBlock.h"

namespace pixelgrove {

// True for a file name that holds ".pal" or ".col" in any case.
bool IsPaletteName(QStringView name);

// Reads the bytes of a palette file:
// - 42004200 (little-endian word), the word 944, 236 times red, green, blue and a byte that is ignored;
// - 42006900, a count, that many times red, green, blue; a count below 1 gives an empty palette;
// - anything else: 768 bytes, colours of 6 bits. The first word is not looked at again: what follows it is
//   green and blue of one colour and red of the next, of which 254 make 256.
// False, with the block as it was, for bytes that fit no form, end too early, or have a count above
// kMaxPaletteColours. What follows a palette of the first two forms is ignored.
bool ReadPalette(QByteArrayView bytes, PaletteBlock& block);

// ReadPalette of a file. False also when it can't be read, or is much larger than any palette.
bool LoadPaletteFile(const QString& path, PaletteBlock& block);

// Stretches or shrinks the first sourceCount bytes to targetCount, in place, along a smooth curve; entries
// behind those stay. No source bytes give zeros. False, with no change, for counts that the channel has no
// room for, or a target below 1.
bool ResamplePalette(std::span<uint8_t> channel, int sourceCount, int targetCount);

// The palette with kMaxPaletteColours colours.
void FillPalette(PaletteBlock& block);

}  // namespace pixelgrove
