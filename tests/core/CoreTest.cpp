#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>
#include <set>
#include <thread>

#include "core/AppState.h"
#include "core/Bitmap.h"
#include "core/PaletteBlock.h"
#include "core/PlayTime.h"
#include "core/Stages.h"
#include "core/UniqueId.h"
#include "platform/SharedMemory.h"

namespace pixelgrove {
namespace {

TEST(Stages, NamesAndSources) {
    const char* names[] = {"+", "Common", "Buffer A", "Buffer B", "Buffer C", "Buffer D", "Cube A", "Image"};
    for (uint32_t id = 0; id < kStageCount; ++id) {
        EXPECT_EQ(StageName(id), QLatin1String(names[id]));
        EXPECT_EQ(stageTabs[id].stageId, int32_t(id));
        EXPECT_EQ(DefaultSource(id).isNull(), id == kStageNone);
        EXPECT_FALSE(DefaultSource(id).endsWith(u'\n'));
        EXPECT_FALSE(DefaultSource(id).contains(u'\t'));
    }
    EXPECT_TRUE(StageName(8).isEmpty());
    EXPECT_TRUE(DefaultSource(8).isNull());
    // Lengths as published: an added or lost blank shows.
    EXPECT_EQ(DefaultSource(kStageCommon).size(), 58);
    EXPECT_EQ(DefaultSource(kStageBufferA), DefaultSource(kStageBufferD));
    EXPECT_EQ(DefaultSource(kStageBufferA).size(), 101);
    EXPECT_EQ(DefaultSource(kStageCubeA).size(), 216);
    EXPECT_EQ(DefaultSource(kStageImage).size(), 305);
}

TEST(Stages, DefaultSamplers) {
    struct Row {
        uint32_t kind;
        const char* name;
        uint32_t wrap, filter, vflip;
    };
    const Row rows[] = {
        {1, "Texture", gl::kMirroredRepeat, gl::kLinearMipmapLinear, 1},
        {2, "Buffer", gl::kMirroredRepeat, gl::kLinear, 0},
        {3, "Cube A", gl::kMirroredRepeat, gl::kLinear, 0},
        {4, "Cubemap", gl::kClampToEdge, gl::kLinearMipmapLinear, 0},
        {5, "Volume", gl::kMirroredRepeat, gl::kLinearMipmapLinear, 0},
        {6, "Keyboard", gl::kClampToEdge, gl::kLinear, 0},
        {7, "Webcam", gl::kClampToEdge, gl::kLinear, 0},
        {8, "Audio", gl::kClampToEdge, gl::kLinear, 0},
    };
    for (const Row& row : rows) {
        ChannelInput channel;
        channel.kind = row.kind;
        channel.srgb = 1;
        channel.vflip = 1 - row.vflip;
        channel.internalFormat = 1;
        EXPECT_EQ(ChannelTypeName(row.kind), QLatin1String(row.name));
        EXPECT_TRUE(DefaultSampler(channel));
        EXPECT_EQ(channel.wrap, row.wrap);
        EXPECT_EQ(channel.filter, row.filter);
        EXPECT_EQ(channel.vflip, row.vflip);
        EXPECT_EQ(channel.samplerCountdown, 2u);
        EXPECT_EQ(channel.srgb, 0u);
        EXPECT_EQ(channel.internalFormat, 1u);
    }
    for (uint32_t kind : {0u, 9u, 0xFFFFFFFFu}) {
        ChannelInput channel;
        channel.kind = kind;
        channel.wrap = 77;
        EXPECT_FALSE(DefaultSampler(channel));
        EXPECT_EQ(channel.wrap, 77u);
    }
    EXPECT_EQ(ChannelTypeName(0), QStringLiteral("Unused"));
    EXPECT_TRUE(ChannelTypeName(9).isEmpty());
}

TEST(Bitmap, RowsArePaddedAndLimitsHold) {
    struct Row {
        int width, bits;
        size_t stride;
    };
    for (const Row& row : {Row{1, 8, 4}, Row{5, 8, 8}, Row{1, 24, 4}, Row{3, 24, 12}, Row{7, 32, 28}}) {
        const auto bitmap = CreateBitmap(row.width, 3, row.bits, false);
        ASSERT_TRUE(bitmap);
        EXPECT_EQ(bitmap->StrideBytes(), row.stride);
        EXPECT_EQ(bitmap->bits, std::vector<uint8_t>(row.stride * 3, 0));
        EXPECT_TRUE(bitmap->IsComplete());
    }
    const auto frame = CreateFrameBitmap(4, 2);
    ASSERT_TRUE(frame);
    EXPECT_TRUE(frame->bottomUp);
    EXPECT_EQ(frame->bitsPerPixel, 32);
    frame->bits.pop_back();
    EXPECT_FALSE(frame->IsComplete());

    EXPECT_TRUE(CreateBitmap(kMaxBitmapSide, 1, 8, false));
    EXPECT_FALSE(CreateBitmap(kMaxBitmapSide + 1, 1, 8, false));
    EXPECT_FALSE(CreateBitmap(1, kMaxBitmapSide + 1, 8, false));
    EXPECT_FALSE(CreateBitmap(0, 1, 32, false));
    EXPECT_FALSE(CreateBitmap(1, -1, 32, false));
    EXPECT_FALSE(CreateBitmap(1, 1, 16, false));
    EXPECT_FALSE(CreateBitmap(kMaxBitmapSide, kMaxBitmapSide, 32, false));
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

TEST(PlayTime, RunsFromATenthToAbout4095) {
    EXPECT_EQ(StartTimeFromBits(0), 0.1f);
    EXPECT_EQ(StartTimeFromBits(0xFFFFFFFF), 4095.0f);
    EXPECT_NEAR(StartTimeFromBits(0x80000000), 2047.55f, 0.001f);
    for (int i = 0; i < 100; ++i) {
        const float time = RandomStartTime();
        EXPECT_GE(time, 0.1f);
        EXPECT_LE(time, 4095.0f);
    }
}

TEST(UniqueId, ThreadsNeverDrawTheSame) {
    std::set<uint64_t> drawn;
    std::mutex lock;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            std::vector<uint64_t> mine;
            mine.reserve(1000);
            for (int i = 0; i < 1000; ++i)
                mine.push_back(NextUniqueId());
            const std::lock_guard hold(lock);
            drawn.insert(mine.begin(), mine.end());
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(drawn.size(), 4000u);
    EXPECT_FALSE(drawn.contains(0));
    const uint64_t before = NextUniqueId();
    NextSubclassId();
    EXPECT_EQ(NextUniqueId(), before + 1);
}

TEST(Globals, LiveFromAllocateToFree) {
    EXPECT_EQ(App(), nullptr);
    EXPECT_EQ(Controls(), nullptr);
    ASSERT_TRUE(AllocateGlobals());
    AppState* state = App();
    ASSERT_NE(state, nullptr);
    EXPECT_EQ(state->host, &SilentHost());
    EXPECT_EQ(state->startTime, 0.1f);
    EXPECT_EQ(Controls()->uniformCount, 0);
    EXPECT_TRUE(AllocateGlobals());
    EXPECT_EQ(App(), state);
    FreeGlobals();
    EXPECT_EQ(App(), nullptr);
    EXPECT_EQ(Controls(), nullptr);
    FreeGlobals();
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
