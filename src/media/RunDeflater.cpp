#include "media/RunDeflater.h"

#include <algorithm>
#include <cstring>

namespace pixelgrove {

namespace {

constexpr uint32_t kEndSymbol = 256;
constexpr uint32_t kFirstLengthSymbol = 257;
// Four codes and what is left of a byte fill a word.
constexpr int kCodeLimit = 14;
constexpr int kHeadCodeLimit = 7;
constexpr size_t kHeadSymbols = 19;
constexpr size_t kStoredBytes = 65535;
constexpr size_t kShortestMatch = 3;
constexpr size_t kLongestMatch = 258;

// The order in which the lengths of the head's own code are written.
constexpr std::array<uint8_t, kHeadSymbols> kHeadOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                          11, 4,  12, 3, 13, 2, 14, 1, 15};

// A match's symbol and the bits behind it.
struct LengthCode {
    uint16_t symbol = 0;
    uint8_t extraBits = 0;
    uint8_t extra = 0;
};

constexpr std::array<LengthCode, kLongestMatch + 1> MakeLengthCodes() {
    std::array<LengthCode, kLongestMatch + 1> codes{};
    size_t length = kShortestMatch;
    uint16_t symbol = kFirstLengthSymbol;
    for (uint8_t extraBits = 0; length < kLongestMatch; ++symbol) {
        // Eight symbols without further bits, then four each.
        if (symbol >= kFirstLengthSymbol + 8 && (symbol - kFirstLengthSymbol) % 4 == 0) ++extraBits;
        for (uint32_t extra = 0; extra < uint32_t(1) << extraBits && length < kLongestMatch; ++extra)
            codes[length++] = {symbol, extraBits, uint8_t(extra)};
    }
    codes[kLongestMatch] = {symbol, 0, 0};
    return codes;
}

constexpr std::array<LengthCode, kLongestMatch + 1> kLengthCodes = MakeLengthCodes();
static_assert(kLengthCodes[10].symbol == 264 && kLengthCodes[11].extraBits == 1);
static_assert(kLengthCodes[257].symbol == 284 && kLengthCodes[257].extra == 30);
static_assert(kLengthCodes[kLongestMatch].symbol == 285);

template <typename Word>
Word Load(const uint8_t* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

// What of a run goes into its next match, so that the rest is none or long enough for another.
uint32_t NextMatch(uint32_t length) {
    const auto match = std::min(length, uint32_t(kLongestMatch));
    const uint32_t rest = length - match;
    return rest > 0 && rest < kShortestMatch ? length - uint32_t(kShortestMatch) : match;
}

}  // namespace

size_t RunDeflater::MostBytes(size_t bytes, size_t blocks) {
    // Stored, a block has 42 bits at most before each part. A whole word is written at once.
    return bytes + 6 * (bytes / kStoredBytes + blocks + 1) + 16;
}

void RunDeflater::CountLiterals(std::span<const uint8_t> bytes, ByteCounts& counts) const {
    // Neighbours in tables of their own: adding one to the same place twice in a row takes long.
    size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        const auto word = Load<uint64_t>(bytes.data() + i);
        for (size_t k = 0; k < 8; ++k)
            ++counts[k % 4][uint8_t(word >> (8 * k))];
    }
    for (; i < bytes.size(); ++i)
        ++counts[0][bytes[i]];
}

void RunDeflater::CountRun(uint32_t length, uint32_t step) {
    while (length > 0) {
        const uint32_t match = NextMatch(length);
        counts_[kLengthCodes[match].symbol] += step;
        length -= match;
    }
}

// Looks at every fourth place, where four bytes at once tell that a run is there; some that are shorter than
// eight go by.
void RunDeflater::FindRuns(std::span<const uint8_t> bytes) {
    runCount_ = 0;
    counts_ = {};
    ByteCounts literals{};
    const uint8_t* data = bytes.data();
    const size_t size = bytes.size();
    size_t done = 0;
    for (size_t i = 1; i + 4 <= size;) {
        if (Load<uint32_t>(data + i) != Load<uint32_t>(data + i - 1)) {
            i += 4;
            continue;
        }
        size_t start = i, end = i + 4;
        while (start > done + 1 && data[start - 1] == data[start - 2])
            --start;
        while (end + 8 <= size && Load<uint64_t>(data + end) == Load<uint64_t>(data + end - 1))
            end += 8;
        while (end < size && data[end] == data[end - 1])
            ++end;
        i = end + 1;
        if (end - start < kShortestRun) continue;
        CountLiterals(bytes.subspan(done, start - done), literals);
        runs_[runCount_++] = {uint32_t(start), uint32_t(end - start)};
        CountRun(uint32_t(end - start), 1);
        done = end;
    }
    CountLiterals(bytes.subspan(done), literals);
    for (size_t i = 0; i < 256; ++i)
        counts_[i] = literals[0][i] + literals[1][i] + literals[2][i] + literals[3][i];
    counts_[kEndSymbol] = 1;
}

// A short run of a frequent byte takes less as literals.
void RunDeflater::DropCostlyRuns(std::span<const uint8_t> bytes) {
    std::array<uint32_t, kLongestMatch + 1> costs{};
    for (size_t length = kShortestMatch; length <= kLongestMatch; ++length)
        costs[length] = lengths_[kLengthCodes[length].symbol] + kLengthCodes[length].extraBits + 1u;
    size_t kept = 0;
    for (size_t i = 0; i < runCount_; ++i) {
        const Run run = runs_[i];
        const uint8_t byte = bytes[run.start];
        const size_t match = std::min<size_t>(run.length, kLongestMatch);
        if (lengths_[byte] * run.length > costs[match]) {
            runs_[kept++] = run;
            continue;
        }
        counts_[byte] += run.length;
        CountRun(run.length, uint32_t(-1));
    }
    if (kept == runCount_) return;
    runCount_ = kept;
    FindCodeLengths(counts_, kCodeLimit, lengths_);
}

// The lengths of the codes, with repetitions, by a code of their own: all that precedes a block's contents.
void RunDeflater::MakeHead() {
    size_t symbols = kMaxHuffmanSymbols;
    while (lengths_[symbols - 1] == 0)
        --symbols;
    std::array<uint8_t, kMaxHuffmanSymbols + 1> all{};
    std::copy_n(lengths_.begin(), symbols, all.begin());
    all[symbols] = 1;  // the only distance that is used: 1, by one bit of 0
    const size_t count = symbols + 1;

    struct Token {
        uint8_t symbol, extraBits, extra;
    };
    std::array<Token, kMaxHuffmanSymbols + 1> tokens;
    size_t tokenCount = 0;
    for (size_t i = 0; i < count;) {
        const uint8_t length = all[i];
        size_t same = 1;
        while (i + same < count && all[i + same] == length)
            ++same;
        if (length == 0 && same >= 11) {
            same = std::min<size_t>(same, 138);
            tokens[tokenCount++] = {18, 7, uint8_t(same - 11)};
        } else if (length == 0 && same >= 3) {
            tokens[tokenCount++] = {17, 3, uint8_t(same - 3)};
        } else if (i > 0 && all[i - 1] == length && same >= 3) {
            same = std::min<size_t>(same, 6);
            tokens[tokenCount++] = {16, 2, uint8_t(same - 3)};
        } else {
            same = 1;
            tokens[tokenCount++] = {length, 0, 0};
        }
        i += same;
    }

    std::array<uint32_t, kHeadSymbols> counts{};
    for (size_t i = 0; i < tokenCount; ++i)
        ++counts[tokens[i].symbol];
    std::array<uint8_t, kHeadSymbols> lengths;
    std::array<uint16_t, kHeadSymbols> codes;
    FindCodeLengths(counts, kHeadCodeLimit, lengths);
    FindCodes(lengths, codes);
    size_t written = kHeadSymbols;
    while (written > 4 && lengths[kHeadOrder[written - 1]] == 0)
        --written;

    headCount_ = 0;
    head_[headCount_++] = {2, 2};  // codes of the block's own
    head_[headCount_++] = {uint32_t(symbols - 257), 5};
    head_[headCount_++] = {0, 5};  // one distance
    head_[headCount_++] = {uint32_t(written - 4), 4};
    for (size_t i = 0; i < written; ++i)
        head_[headCount_++] = {lengths[kHeadOrder[i]], 3};
    for (size_t i = 0; i < tokenCount; ++i) {
        const Token& token = tokens[i];
        const uint32_t length = lengths[token.symbol];
        head_[headCount_++] = {codes[token.symbol] | uint32_t(token.extra) << length,
                               length + token.extraBits};
    }
}

size_t RunDeflater::BitsOfBlock() const {
    size_t bits = 1;
    for (size_t i = 0; i < headCount_; ++i)
        bits += head_[i].count;
    for (size_t i = 0; i < kMaxHuffmanSymbols; ++i)
        bits += size_t(counts_[i]) * lengths_[i];
    for (size_t i = 0; i < runCount_; ++i) {
        for (uint32_t rest = runs_[i].length; rest > 0;) {
            const uint32_t match = NextMatch(rest);
            bits += kLengthCodes[match].extraBits + 1u;
            rest -= match;
        }
    }
    return bits;
}

void RunDeflater::WriteStored(std::span<const uint8_t> bytes, bool isLast) {
    do {
        const std::span part = bytes.first(std::min(bytes.size(), kStoredBytes));
        bytes = bytes.subspan(part.size());
        writer_.Write({uint32_t(isLast && bytes.empty()), 3});
        writer_.FillByte();
        writer_.Write({uint32_t(part.size()) | ~uint32_t(part.size()) << 16, 32});
        std::copy(part.begin(), part.end(), writer_.out);
        writer_.out += part.size();
    } while (!bytes.empty());
}

void RunDeflater::WriteLiterals(std::span<const uint8_t> bytes) {
    BitWriter writer = writer_;
    size_t i = 0;
    for (; i + 4 <= bytes.size(); i += 4) {
        for (size_t k = 0; k < 4; ++k)
            writer.Put(literals_[bytes[i + k]]);
        writer.Flush();
    }
    for (; i < bytes.size(); ++i)
        writer.Write(literals_[bytes[i]]);
    writer_ = writer;
}

void RunDeflater::WriteRun(uint32_t length) {
    while (length > 0) {
        const uint32_t match = NextMatch(length);
        writer_.Write(matches_[match]);
        length -= match;
    }
}

void RunDeflater::WriteBlock(std::span<const uint8_t> bytes, bool isLast) {
    std::array<uint16_t, kMaxHuffmanSymbols> codes;
    FindCodes(lengths_, codes);
    for (size_t i = 0; i < literals_.size(); ++i)
        literals_[i] = {codes[i], lengths_[i]};
    for (size_t length = kShortestMatch; length <= kLongestMatch; ++length) {
        const LengthCode& code = kLengthCodes[length];
        const uint32_t codeBits = lengths_[code.symbol];
        // The distance's bit stands above and is 0.
        matches_[length] = {codes[code.symbol] | uint32_t(code.extra) << codeBits,
                            codeBits + code.extraBits + 1u};
    }
    writer_.Write({uint32_t(isLast), 1});
    for (size_t i = 0; i < headCount_; ++i)
        writer_.Write(head_[i]);
    size_t done = 0;
    for (size_t i = 0; i < runCount_; ++i) {
        const Run run = runs_[i];
        WriteLiterals(bytes.subspan(done, run.start - done));
        WriteRun(run.length);
        done = run.start + run.length;
    }
    WriteLiterals(bytes.subspan(done));
    writer_.Write({codes[kEndSymbol], lengths_[kEndSymbol]});
}

void RunDeflater::AddBlock(std::span<const uint8_t> bytes, bool isLast) {
    FindRuns(bytes);
    FindCodeLengths(counts_, kCodeLimit, lengths_);
    DropCostlyRuns(bytes);
    MakeHead();
    if (BitsOfBlock() < bytes.size() * 8)
        WriteBlock(bytes, isLast);
    else
        WriteStored(bytes, isLast);
}

size_t RunDeflater::EndPart(bool isLast) {
    if (!isLast) WriteStored({}, false);
    writer_.FillByte();
    return size_t(writer_.out - begin_);
}

}  // namespace pixelgrove
