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

TEST(VolumeFile, CountsUploadBytesAndRefusesWhatCannotBeUploaded) {
    constexpr uint32_t kHuge = 0xFFFFFFFF;
    const struct {
        VolumeHeader header;
        std::optional<uint64_t> bytes;
    } cases[] = {
        {{32, 32, 32, 1}, 32768},
        {{32, 32, 32, 2}, 65536},
        {{32, 32, 32, 4}, 32768},  // one component a texel
        {{5, 2, 3, 1}, 48},        // rows of 5 read as 8
        {{2048, 2048, 2048, 2}, uint64_t(1) << 34},
        {{1, 1, 2049, 1}, std::nullopt},
        {{1, 1, 0, 1}, std::nullopt},
        {{8, 8, 8, 3}, std::nullopt},
        {{8, 8, 8, kHuge}, std::nullopt},
        {{1u << 22, 1u << 21, 1u << 21, 1}, std::nullopt},  // 2^64
    };
    for (const auto& c : cases)
        EXPECT_EQ(VolumeUploadBytes(c.header), c.bytes)
            << c.header.x << ' ' << c.header.y << ' ' << c.header.z << ' ' << c.header.sampleKind;
}

TEST(VolumeFile, IsCompleteOnlyWithAllSamples) {
    EXPECT_TRUE(IsVolumeComplete(VolumeFile(4, 3, 2, 1, 24)));
    EXPECT_FALSE(IsVolumeComplete(VolumeFile(4, 3, 2, 1, 23)));
    EXPECT_FALSE(IsVolumeComplete(VolumeFile(4, 3, 2, 2, 47)));
    EXPECT_FALSE(IsVolumeComplete(VolumeFile(2048, 2048, 1024, 1, 1000)));  // promises 4 GiB
}

}  // namespace
}  // namespace pixelgrove
