#include <gtest/gtest.h>

#include "media/FramePool.h"

namespace pixelgrove {
namespace {

TEST(FramePool, WhatIsHeldIsNotGivenAgain) {
    FramePool pool;
    std::shared_ptr<Bitmap> first = pool.Take(64, 32);
    ASSERT_TRUE(first && first->IsComplete() && first->bottomUp && first->bitsPerPixel == 32);
    const uint8_t* memory = first->bits.data();
    const BitmapRef held = first;
    first.reset();
    const std::shared_ptr<Bitmap> second = pool.Take(64, 32);
    EXPECT_NE(second->bits.data(), memory) << "somebody still looks at it";
    EXPECT_EQ(held->bits.data(), memory);
}

TEST(FramePool, ASpareServesItsOwnSizeAlone) {
    FramePool pool;
    const uint8_t* memory = pool.Take(64, 32)->bits.data();
    EXPECT_EQ(pool.Take(64, 32)->bits.data(), memory);
    const auto other = pool.Take(32, 64);
    EXPECT_EQ(other->width, 32);
    EXPECT_EQ(other->bits.size(), size_t(32) * 64 * 4);
    EXPECT_EQ(pool.Take(0, 64), nullptr);
}

TEST(FramePool, BitmapsOutliveIt) {
    std::shared_ptr<Bitmap> bitmap = FramePool().Take(8, 8);
    bitmap->bits.back() = 7;
    EXPECT_EQ(bitmap->bits.back(), 7);
    bitmap.reset();
}

}  // namespace
}  // namespace pixelgrove
