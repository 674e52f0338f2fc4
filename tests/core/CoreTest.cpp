#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "core/AppState.h"
#include "core/Bitmap.h"
#include "core/BitmapRows.h"
#include "core/PaletteBlock.h"
#include "core/Stages.h"

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

TEST(Palette, StartsWithSmoothCurvesDrawnAfresh) {
    auto first = std::make_unique<PaletteTable>(), second = std::make_unique<PaletteTable>();
    FillDefaultPalette(*first);
    FillDefaultPalette(*second);
    EXPECT_EQ(first->count, 2048u);
    EXPECT_NE(first->colours, second->colours);
    for (size_t i = 1; i < 2048; ++i)
        for (const int shift : {0, 8, 16})
            EXPECT_LE(
                std::abs(int(first->colours[i] >> shift & 255) - int(first->colours[i - 1] >> shift & 255)),
                2);
    EXPECT_EQ(first->colours[0] >> 24, 0u);
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
    EXPECT_EQ(table->count, 2u);
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

[[noreturn]] void FreePinnedGlobals() {
    const bool made = AllocateGlobals();
    AppState* state = App();
    PinGlobals();
    FreeGlobals();
    state->fpsTarget = 77;  // a freed record would be caught by a sanitizer
    _exit(made && App() == nullptr && Controls() == nullptr && state->fpsTarget == 77 ? 0 : 1);
}

TEST(Globals, PinnedRecordsStayInMemory) {
    // In a process of its own, as pinning is for good.
    EXPECT_EXIT(FreePinnedGlobals(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace pixelgrove
