#include "core/BitmapRows.h"

#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

// A bitmap whose every byte, padding included, differs from its neighbours.
Bitmap NumberedBitmap(int width, int height, int bitsPerPixel) {
    Bitmap bitmap{width, height, bitsPerPixel, false, {}};
    bitmap.bits.resize(bitmap.StrideBytes() * size_t(height));
    for (size_t i = 0; i < bitmap.bits.size(); ++i)
        bitmap.bits[i] = uint8_t(i);
    return bitmap;
}

TEST(BitmapRows, DropsPaddingAndReversesRows) {
    using Bytes = std::vector<uint8_t>;
    Bitmap grey = NumberedBitmap(3, 3, 8);
    EXPECT_EQ(RepackBitmapRows(grey, false), (Bytes{0, 1, 2, 4, 5, 6, 8, 9, 10}));
    EXPECT_EQ(RepackBitmapRows(grey, true), (Bytes{8, 9, 10, 4, 5, 6, 0, 1, 2}));
    grey.bottomUp = true;  // memory order counts
    EXPECT_EQ(RepackBitmapRows(grey, false), (Bytes{0, 1, 2, 4, 5, 6, 8, 9, 10}));

    EXPECT_EQ(RepackBitmapRows(NumberedBitmap(1, 2, 24), true), (Bytes{4, 5, 6, 0, 1, 2}));
}

TEST(BitmapRows, RefusesOtherDepthsAndMissingBits) {
    EXPECT_FALSE(RepackBitmapRows(NumberedBitmap(4, 4, 16), false));
    EXPECT_FALSE(RepackBitmapRows(Bitmap(), false));
    Bitmap cut = NumberedBitmap(3, 3, 24);
    cut.bits.pop_back();
    EXPECT_FALSE(RepackBitmapRows(cut, false));
}

}  // namespace
}  // namespace pixelgrove
