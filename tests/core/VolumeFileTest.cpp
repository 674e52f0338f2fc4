#include "core/VolumeFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace pixelgrove {
namespace {

std::vector<uint8_t> VolumeFile(uint32_t x, uint32_t y, uint32_t z, uint32_t kind, size_t sampleBytes) {
    std::vector<uint8_t> file = {'B', 'I', 'N', 0x7F};
    for (const uint32_t value : {x, y, z, kind})
        for (int shift = 0; shift < 32; shift += 8)
            file.push_back(uint8_t(value >> shift));
    file.resize(file.size() + sampleBytes);
    return file;
}

TEST(VolumeFile, RefusesShortOrForeignFiles) {
    std::vector<uint8_t> file = VolumeFile(1, 1, 1, 1, 4);
    for (size_t length = 0; length < kVolumeHeaderBytes; ++length)
        EXPECT_FALSE(ReadVolumeHeader(std::span(file).first(length))) << length;
    file[2] = 'M';
    EXPECT_FALSE(ReadVolumeHeader(file));
    EXPECT_FALSE(IsVolumeComplete(file));
}

TEST(VolumeFile, IsCompleteOnlyWithAllSamplesOfAKnownKind) {
    constexpr uint32_t kHuge = 0xFFFFFFFF;
    const struct {
        VolumeHeader header;
        std::optional<uint64_t> bytes;
    } cases[] = {
        {{4, 3, 2, 1}, 24},
        {{4, 3, 2, 2}, 48},
        {{4, 3, 2, 4}, 24},  // one component a texel
        {{5, 2, 3, 1}, 30},  // rows without gaps
        {{1, 1, 4096, 1}, 4096},
        {{65535, 65535, 65535, 2}, uint64_t(65535) * 65535 * 65535 * 2},
        {{1, 1, 65536, 1}, std::nullopt},
        {{1, 1, 0, 1}, std::nullopt},
        {{8, 8, 8, 3}, std::nullopt},
        {{8, 8, 8, kHuge}, std::nullopt},
        {{1u << 22, 1u << 21, 1u << 21, 1}, std::nullopt},  // 2^64
    };
    for (const auto& [header, bytes] : cases) {
        SCOPED_TRACE(testing::Message() << header.x << ' ' << header.y << ' ' << header.z);
        const auto file = [&header](size_t samples) {
            return VolumeFile(header.x, header.y, header.z, header.sampleKind, samples);
        };
        EXPECT_EQ(VolumeDataBytes(header), bytes);
        const bool isSmall = bytes && *bytes < 10000;
        EXPECT_EQ(isSmall, IsVolumeComplete(file(isSmall ? *bytes : 10000)));
        EXPECT_FALSE(IsVolumeComplete(file(isSmall ? *bytes - 1 : 0)));
    }
}

}  // namespace
}  // namespace pixelgrove
