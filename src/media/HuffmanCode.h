// Huffman codes in the form of the deflate format: short enough, known by their lengths alone.
//
// Pure; any thread.
#pragma once

#include <cstdint>
#include <span>

namespace pixelgrove {

// The most symbols of a code.
constexpr size_t kMaxHuffmanSymbols = 286;

// Gives each symbol that occurs the length of its code, at most `limit` bits, and 0 to the others. The codes
// use up all patterns of bits where two symbols or more occur; a single one gets one bit. The same counts
// give the same lengths on every machine. As many lengths as counts, at most kMaxHuffmanSymbols and 2^limit;
// the sum of the counts is below 2^32.
void FindCodeLengths(std::span<const uint32_t> counts, int limit, std::span<uint8_t> lengths);

// The codes that belong to the lengths, of 15 bits at most, the first bit lowest.
void FindCodes(std::span<const uint8_t> lengths, std::span<uint16_t> codes);

}  // namespace pixelgrove
