#include "media/HuffmanCode.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace pixelgrove {

namespace {

constexpr size_t kLongest = 15;

struct Leaf {
    uint32_t count = 0;
    uint16_t symbol = 0;
};

// How many leaves lie at each depth of the tree that always joins the two rarest, those below the limit
// counted there. Leaves are ordered by their counts, two at least.
std::array<uint32_t, kLongest + 1> CountDepths(std::span<const Leaf> leaves, int limit) {
    std::array<uint32_t, kMaxHuffmanSymbols> weights{};
    std::array<uint16_t, kMaxHuffmanSymbols> leafParents{}, parents{};
    const size_t joints = leaves.size() - 1;
    size_t leaf = 0, joint = 0;  // the rarest that are still to be joined; joints come up in their order too
    for (size_t made = 0; made < joints; ++made) {
        for (int side = 0; side < 2; ++side) {
            const bool takesLeaf =
                leaf < leaves.size() && (joint == made || leaves[leaf].count <= weights[joint]);
            weights[made] += takesLeaf ? leaves[leaf].count : weights[joint];
            (takesLeaf ? leafParents[leaf++] : parents[joint++]) = uint16_t(made);
        }
    }
    std::array<uint16_t, kMaxHuffmanSymbols> depths{};
    for (size_t i = joints - 1; i-- > 0;)
        depths[i] = uint16_t(depths[parents[i]] + 1);
    std::array<uint32_t, kLongest + 1> numbers{};
    for (size_t i = 0; i < leaves.size(); ++i)
        ++numbers[size_t(std::min(depths[leafParents[i]] + 1, limit))];
    return numbers;
}

// Where leaves were lifted to the limit there are too few patterns for them: each step moves one of those
// beside a leaf that stands higher, which makes room of one pattern.
void MakeRoom(std::array<uint32_t, kLongest + 1>& numbers, int limit) {
    uint32_t taken = 0;
    for (int depth = 1; depth <= limit; ++depth)
        taken += numbers[size_t(depth)] << (limit - depth);
    for (; taken > uint32_t(1) << limit; --taken) {
        size_t depth = size_t(limit) - 1;
        while (numbers[depth] == 0)
            --depth;
        --numbers[size_t(limit)];
        --numbers[depth];
        numbers[depth + 1] += 2;
    }
}

}  // namespace

void FindCodeLengths(std::span<const uint32_t> counts, int limit, std::span<uint8_t> lengths) {
    std::array<Leaf, kMaxHuffmanSymbols> all;
    size_t used = 0;
    for (size_t i = 0; i < counts.size(); ++i) {
        lengths[i] = 0;
        if (counts[i] != 0) all[used++] = {counts[i], uint16_t(i)};
    }
    if (used == 0) return;
    if (used == 1) {
        lengths[all[0].symbol] = 1;
        return;
    }
    const std::span leaves(all.data(), used);
    // No two are alike.
    std::ranges::sort(leaves, {}, [](const Leaf& leaf) { return std::pair(leaf.count, leaf.symbol); });
    std::array<uint32_t, kLongest + 1> numbers = CountDepths(leaves, limit);
    MakeRoom(numbers, limit);
    size_t leaf = 0;
    for (int length = limit; length > 0; --length)
        for (uint32_t i = 0; i < numbers[size_t(length)]; ++i)
            lengths[leaves[leaf++].symbol] = uint8_t(length);
}

void FindCodes(std::span<const uint8_t> lengths, std::span<uint16_t> codes) {
    std::array<uint32_t, kLongest + 1> numbers{}, next{};
    for (const uint8_t length : lengths)
        ++numbers[length];
    numbers[0] = 0;
    for (size_t length = 1; length <= kLongest; ++length)
        next[length] = (next[length - 1] + numbers[length - 1]) << 1;
    for (size_t i = 0; i < lengths.size(); ++i) {
        const uint32_t code = lengths[i] == 0 ? 0 : next[lengths[i]]++;
        uint32_t turned = 0;
        for (int bit = 0; bit < lengths[i]; ++bit)
            turned |= (code >> bit & 1) << (lengths[i] - 1 - bit);
        codes[i] = uint16_t(turned);
    }
}

}  // namespace pixelgrove
