#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "media/RunDeflater.h"

namespace pixelgrove {
namespace {

using Bytes = std::vector<uint8_t>;

// In blocks of that size, each of the first half's parts ended by itself.
Bytes Deflate(const Bytes& bytes, size_t blockBytes) {
    Bytes stream;
    const size_t half = bytes.size() / 2;
    for (const auto& [from, to] : {std::pair(size_t(0), half), std::pair(half, bytes.size())}) {
        if (from == to) continue;
        const size_t blocks = (to - from) / blockBytes + 1;
        Bytes part(RunDeflater::MostBytes(to - from, blocks));
        const auto deflater = std::make_unique<RunDeflater>(part.data());
        const bool isLast = to == bytes.size();
        for (size_t i = from; i < to; i += blockBytes) {
            const size_t count = std::min(blockBytes, to - i);
            deflater->AddBlock({bytes.data() + i, count}, isLast && i + count == to);
        }
        const size_t written = deflater->EndPart(isLast);
        EXPECT_LE(written + 8, part.size()) << "whole words are written";
        stream.insert(stream.end(), part.begin(), part.begin() + std::ptrdiff_t(written));
    }
    return stream;
}

// Nothing where the stream isn't whole, or goes on behind its end.
Bytes Inflate(const Bytes& stream, size_t bytes) {
    Bytes back(bytes + 1);
    z_stream state{};
    EXPECT_EQ(inflateInit2(&state, -MAX_WBITS), Z_OK);
    state.next_in = const_cast<Bytef*>(stream.data());
    state.avail_in = uInt(stream.size());
    state.next_out = back.data();
    state.avail_out = uInt(back.size());
    const int result = inflate(&state, Z_FINISH);
    back.resize(state.total_out);
    inflateEnd(&state);
    return result == Z_STREAM_END && state.avail_in == 0 ? back : Bytes();
}

struct Sample {
    std::string name;
    Bytes bytes;
};

std::vector<Sample> Samples() {
    std::mt19937 random(7);
    std::vector<Sample> samples = {{"one byte", {200}}, {"two", {0, 0}},     {"zeros", Bytes(300'000)},
                                   {"alternating", {}}, {"noise", {}},       {"runs", {}},
                                   {"Fibonacci", {}},   {"mostly zeros", {}}};
    for (int i = 0; i < 200'001; ++i) {
        samples[3].bytes.push_back(i % 2 == 0 ? 1 : 2);
        samples[4].bytes.push_back(uint8_t(random()));
        samples[7].bytes.push_back(random() % 16 == 0 ? uint8_t(random()) : uint8_t(0));
    }
    for (int length = 1; length < 800; ++length)
        samples[5].bytes.insert(samples[5].bytes.end(), size_t(length), uint8_t(length * 37));
    // The rarest would have codes of 24 bits.
    size_t count = 1, before = 1;
    for (uint8_t symbol = 0; symbol < 25; ++symbol) {
        samples[6].bytes.insert(samples[6].bytes.end(), count, symbol);
        before = std::exchange(count, count + before);
    }
    std::ranges::shuffle(samples[6].bytes, random);
    return samples;
}

TEST(RunDeflaterTest, InflatesToWhatWentIn) {
    for (const Sample& sample : Samples()) {
        for (const size_t blockBytes : {size_t(999), RunDeflater::kBlockBytes}) {
            const Bytes stream = Deflate(sample.bytes, blockBytes);
            EXPECT_TRUE(Inflate(stream, sample.bytes.size()) == sample.bytes)
                << sample.name << " in blocks of " << blockBytes;
        }
    }
}

TEST(RunDeflaterTest, RunsTakeNextToNothingAndNoiseNoMoreThanItself) {
    const std::vector<Sample> samples = Samples();
    EXPECT_LT(Deflate(samples[2].bytes, RunDeflater::kBlockBytes).size(), 700u);
    EXPECT_LT(Deflate(samples[4].bytes, RunDeflater::kBlockBytes).size(), samples[4].bytes.size() + 50);
}

}  // namespace
}  // namespace pixelgrove
