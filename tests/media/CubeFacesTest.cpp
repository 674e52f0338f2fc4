#include "media/CubeFaces.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "media/ImageFiles.h"
#include "support/ImageTestSupport.h"

namespace pixelgrove {
namespace {

constexpr QRgb kFaceColours[6] = {0xFFC80000, 0xFF3C0000, 0xFF00C800, 0xFF003C00, 0xFF0000C8, 0xFF00003C};
constexpr int kCells[6][2] = {{2, 1}, {0, 1}, {1, 0}, {1, 2}, {1, 1}, {3, 1}};  // column, row

// A cross of faces, each with a black seam of 2 pixels, a white margin around it, and the lower half of
// every face darker. One row and column more than the faces, since the cut leaves the last ones out.
QImage CrossImage(int faceWidth, int faceHeight, int leftMargin, int topMargin) {
    QImage image(leftMargin + 4 * faceWidth + 9, topMargin + 3 * faceHeight + 6, QImage::Format_RGB32);
    image.fill(0xFFFFFFFF);
    QPainter painter(&image);
    painter.fillRect(leftMargin, topMargin, 4 * faceWidth + 1, 3 * faceHeight + 1, QColor(0x40, 0x40, 0x40));
    for (int i = 0; i < 6; ++i) {
        const QRect cell(leftMargin + kCells[i][0] * faceWidth, topMargin + kCells[i][1] * faceHeight,
                         faceWidth, faceHeight);
        painter.fillRect(cell, Qt::black);
        const QRect inner = cell.adjusted(2, 2, -2, -2);
        painter.fillRect(inner, QColor(kFaceColours[i]));
        painter.fillRect(inner.adjusted(0, inner.height() / 2, 0, 0), QColor(kFaceColours[i]).darker(200));
    }
    return image;
}

TEST(SplitCubeCross, CutsMarginAndSeamsAndKeepsFacesUpright) {
    for (const bool bottomUp : {false, true}) {
        std::array<BitmapRef, 6> faces;
        const int depth = bottomUp ? 32 : 24;
        ASSERT_TRUE(SplitCubeCross(*FromImage(CrossImage(20, 16, 3, 11), depth, bottomUp), faces));
        for (int i = 0; i < 6; ++i) {
            const Bitmap& face = *faces[size_t(i)];
            ASSERT_EQ(QSize(face.width, face.height), QSize(20, 20));
            EXPECT_EQ(face.bitsPerPixel, 32);
            const QRgb dark = QColor(kFaceColours[i]).darker(200).rgb();
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < 20; ++x)
                    ASSERT_EQ(PixelOf(face, x, y), y < 10 ? kFaceColours[i] : dark)
                        << bottomUp << ' ' << i << ": " << x << ',' << y;
        }
    }
}

TEST(SplitCubeCross, RefusesWhatHoldsNoCross) {
    std::array<BitmapRef, 6> faces;
    const auto fails = [&](const Bitmap& bitmap) {
        faces.fill(PatternBitmap(1, 1, 8, false, false));
        const bool split = SplitCubeCross(bitmap, faces);
        return !split && std::all_of(faces.begin(), faces.end(), [](const BitmapRef& face) { return !face; });
    };
    EXPECT_TRUE(fails(*CreateBitmap(64, 48, 32, false)));  // one colour
    EXPECT_TRUE(fails(*PatternBitmap(1, 1, 24, false, false)));
    EXPECT_TRUE(fails(*PatternBitmap(4 * 4 + 1, 100, 24, false, false)));
    EXPECT_TRUE(fails(*PatternBitmap(100, 3 * 4 + 1, 24, false, false)));
    EXPECT_TRUE(fails(*PatternBitmap(32768, 20, 8, false, false)));  // six faces of 8191 x 8191
    EXPECT_TRUE(fails(Bitmap()));
    const auto cut = FromImage(CrossImage(20, 20, 1, 1), 24, false);
    cut->bits.pop_back();
    EXPECT_TRUE(fails(*cut));
}

using LoadCubemapFacesTest = ImageFileTest;

TEST_F(LoadCubemapFacesTest, TakesSixFilesOrSplitsTheCross) {
    const auto face = [this](int n) { return CubeFacePath(Path("sky.png"), n); };
    std::array<BitmapRef, 6> faces;
    // A missing file leaves its slot empty, a damaged one fails all.
    for (const int n : {0, 1, 2, 4, 5})
        ASSERT_TRUE(WriteBytes(face(n), Encode(PatternImage(8 + n, 4), "png")));
    ASSERT_TRUE(LoadCubemapFaces(face(0), faces));
    for (int n = 0; n < 6; ++n)
        EXPECT_EQ(faces[size_t(n)] ? faces[size_t(n)]->width : 0, n == 3 ? 0 : 8 + n) << n;

    ASSERT_TRUE(WriteBytes(face(3), "no picture"));
    EXPECT_FALSE(LoadCubemapFaces(face(0), faces));
    EXPECT_EQ(faces, (std::array<BitmapRef, 6>()));

    // Without a second file the first one is a cross.
    ASSERT_TRUE(QFile::remove(face(1)));
    ASSERT_TRUE(WriteBytes(face(0), Encode(CrossImage(16, 16, 4, 4), "png")));
    ASSERT_TRUE(LoadCubemapFaces(face(0), faces));
    EXPECT_EQ(PixelOf(*faces[0], 3, 3), kFaceColours[0]);
    EXPECT_EQ(faces[5]->width, 16);

    EXPECT_FALSE(LoadCubemapFaces(Path("missing.png"), faces));
    EXPECT_FALSE(faces[0]);
}

}  // namespace
}  // namespace pixelgrove
