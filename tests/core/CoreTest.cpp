#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "core/RunControls.h"
#include "core/Stages.h"
#include "media/Bitmap.h"
#include "media/BitmapRows.h"
#include "media/PaletteBlock.h"
#include "media/VolumeFile.h"

namespace pixelgrove {
namespace {

TEST(Stages, DefaultSourcesAreAsPublished) {
    const qsizetype lengths[] = {0, 58, 101, 101, 101, 101, 216, 305};  // an added or lost blank shows
    for (uint32_t id = 0; id < kStageCount; ++id) {
        EXPECT_EQ(DefaultSource(id).size(), lengths[id]) << id;
    }
}

TEST(Bitmap, RowsArePaddedAndLimitsHold) {
    for (const auto& [width, bits, stride] :
         {std::tuple{5, 8, 8u}, {1, 24, 4u}, {3, 24, 12u}, {7, 32, 28u}}) {
        const auto bitmap = CreateBitmap(width, 3, bits, false);
        ASSERT_TRUE(bitmap);
        EXPECT_EQ(bitmap->StrideBytes(), stride);
        EXPECT_EQ(bitmap->bits, std::vector<uint8_t>(stride * 3, 0));
        EXPECT_TRUE(bitmap->IsComplete());
    }

    EXPECT_TRUE(CreateBitmap(kMaxBitmapSide, 1, 8, false));
    EXPECT_FALSE(CreateBitmap(kMaxBitmapSide + 1, 1, 8, false));
    EXPECT_FALSE(CreateBitmap(1, kMaxBitmapSide + 1, 8, false));
    EXPECT_FALSE(CreateBitmap(0, -1, 32, false));
    EXPECT_FALSE(CreateBitmap(1, 1, 16, false));
    EXPECT_FALSE(CreateBitmap(kMaxBitmapSide, kMaxBitmapSide, 32, false));
}

TEST(Bitmap, RowsAreRepackedWithoutPadding) {
    using Bytes = std::vector<uint8_t>;
    Bitmap grey{3, 2, 8, false, {0, 1, 2, 99, 4, 5, 6, 99}};
    EXPECT_EQ(RepackBitmapRows(grey, true), (Bytes{4, 5, 6, 0, 1, 2}));
    grey.bottomUp = true;  // memory order counts
    EXPECT_EQ(RepackBitmapRows(grey, false), (Bytes{0, 1, 2, 4, 5, 6}));
    grey.bits.pop_back();
    EXPECT_FALSE(RepackBitmapRows(grey, false));
}

TEST(Palette, UnpacksAndClampsWhatAnotherProcessWrote) {
    auto block = std::make_unique<PaletteBlock>();
    auto table = std::make_unique<PaletteTable>();
    block->count = 2;
    block->red[1] = 0x12;
    block->green[1] = 0xFE;
    block->blue[1] = 0x56;
    block->blue[2047] = 9;
    UnpackPalette(*block, *table);
    EXPECT_EQ(table->colours[1], 0x12FE56u);
    EXPECT_EQ(table->serial, 1u);
    for (const auto& [given, used] :
         {std::pair{2049, 2048u}, {INT32_MAX, 2048u}, {-1, 0u}, {INT32_MIN, 0u}}) {
        block->count = given;
        UnpackPalette(*block, *table);
        EXPECT_EQ(table->count, used);
    }
    EXPECT_EQ(table->colours[2047], 9u);
    EXPECT_EQ(table->serial, 5u);
}

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

TEST(RunControls, ACopyTakesOverWhatIsAskedAndWritesApart) {
    RunControls first;
    first.fpsTarget = 77;
    first.RequestRecording();
    first.timeRequest.Ask({.time = -2.5f, .framesAnew = true});
    RunControls second(first);
    first.fpsTarget = 78;
    second.RequestRecording();
    EXPECT_EQ(second.fpsTarget, 77u);
    uint32_t seen = first.recordingActive;
    EXPECT_FALSE(second.recordingActive.compare_exchange_strong(seen, 0)) << "requests are told apart";
    second.timeRequest.Ask({0.0f});
    const auto place = second.timeRequest.Take();
    ASSERT_TRUE(place);
    EXPECT_TRUE(place->time == 0.0f && place->framesAnew);
    EXPECT_FALSE(second.timeRequest.Take());
    EXPECT_EQ(first.timeRequest.Take()->time, -2.5f);
}

}  // namespace
}  // namespace pixelgrove
