// RunDeflater: the deflate format for filtered pictures. What repeats in those are runs of one byte; nothing
// else is looked for, which is several times as quick as a search and finds as much, and the codes are made
// anew for each block.
//
// Owned and used by one thread. The same bytes give the same stream on every machine.
#pragma once

#include <QtEndian>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "media/HuffmanCode.h"

namespace pixelgrove {

// A pattern of bits, the first one lowest.
struct BitPattern {
    uint32_t bits = 0, count = 0;
};

// Bits into bytes, from the lowest on. Loops work on a copy, which stays in registers.
struct BitWriter {
    uint8_t* out = nullptr;
    uint64_t bits = 0;  // not written yet
    uint32_t count = 0;

    // At most 63 bits stand between two calls of Flush.
    void Put(BitPattern pattern) {
        bits |= uint64_t(pattern.bits) << count;
        count += pattern.count;
    }
    // Writes a whole word, of which the whole bytes count; at most 7 bits are left.
    void Flush() {
        qToLittleEndian<quint64>(bits, out);
        out += count / 8;
        bits >>= count & ~7u;
        count &= 7;
    }
    void Write(BitPattern pattern) {
        Put(pattern);
        Flush();
    }
    // Zeros up to a whole byte.
    void FillByte() { Write({0, (8 - count) % 8}); }
};

class RunDeflater {
  public:
    // The most bytes of one block.
    static constexpr size_t kBlockBytes = 100'000;

    // Room that is enough for the blocks of so many bytes and their end.
    static size_t MostBytes(size_t bytes, size_t blocks);

    // Writes from `out` on, where there is that room. The object is large: not for a stack.
    explicit RunDeflater(uint8_t* out) : begin_(out), writer_{out} {}
    RunDeflater(const RunDeflater&) = delete;
    RunDeflater& operator=(const RunDeflater&) = delete;

    // A block of 1 to kBlockBytes bytes; the last one ends the stream.
    void AddBlock(std::span<const uint8_t> bytes, bool isLast);

    // Behind the last block, or, with an empty block before, where another stream goes on: fills the last
    // byte. Gives the number of bytes that were written.
    size_t EndPart(bool isLast);

  private:
    static constexpr size_t kShortestRun = 5;
    static constexpr size_t kLongestMatch = 258;

    // Repeats the byte before it.
    struct Run {
        uint32_t start = 0, length = 0;
    };
    using ByteCounts = std::array<std::array<uint32_t, 256>, 4>;

    void FindRuns(std::span<const uint8_t> bytes);
    void CountLiterals(std::span<const uint8_t> bytes, ByteCounts& counts) const;
    void CountRun(uint32_t length, uint32_t step);
    void DropCostlyRuns(std::span<const uint8_t> bytes);
    void MakeHead();
    size_t BitsOfBlock() const;
    void WriteStored(std::span<const uint8_t> bytes, bool isLast);
    void WriteHead(bool isLast);
    void WriteLiterals(std::span<const uint8_t> bytes);
    void WriteRun(uint32_t length);
    void WriteBlock(std::span<const uint8_t> bytes, bool isLast);

    uint8_t* const begin_;
    BitWriter writer_;

    // Of the block.
    std::array<Run, kBlockBytes / kShortestRun> runs_;
    size_t runCount_ = 0;
    std::array<uint32_t, kMaxHuffmanSymbols> counts_;
    std::array<uint8_t, kMaxHuffmanSymbols> lengths_;
    std::array<BitPattern, 256> literals_;
    std::array<BitPattern, kLongestMatch + 1> matches_;
    std::array<BitPattern, 2 * (kMaxHuffmanSymbols + 32)> head_;  // the code lengths, packed
    size_t headCount_ = 0;
};

}  // namespace pixelgrove
