#include "persist/CubeFaces.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QTemporaryDir>
#include <tuple>

#include "ImageTestSupport.h"
#include "persist/ImageFiles.h"

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

Bitmap FromImage(const QImage& image, int depth, bool bottomUp) {
    Bitmap bitmap = *CreateBitmap(image.width(), image.height(), depth, bottomUp);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            SetPixel(bitmap, x, y, image.pixel(x, y));
    return bitmap;
}

TEST(CubeFacePath, NumbersGoBeforeTheExtension) {
    const std::tuple<QString, int, QString> cases[] = {
        {QStringLiteral("/a/sky.jpg"), 5, QStringLiteral("/a/sky_5.jpg")},
        {QStringLiteral("/a.b/sky"), 1, QStringLiteral("/a.b/sky_1")},
        {QStringLiteral("c:\\a.b\\sky"), 1, QStringLiteral("c:\\a.b\\sky_1")},
        {QStringLiteral("a/.png"), 2, QStringLiteral("a/_2.png")},
        {QStringLiteral("a/sky."), 3, QStringLiteral("a/sky_3.")},
    };
    for (const auto& [path, n, result] : cases)
        EXPECT_EQ(CubeFacePath(path, n), result);
}

TEST(SplitCubeCross, CutsMarginAndSeamsAndKeepsFacesUpright) {
    for (const bool bottomUp : {false, true}) {
        std::array<BitmapRef, 6> faces;
        const int depth = bottomUp ? 32 : 24;
        ASSERT_TRUE(SplitCubeCross(FromImage(CrossImage(20, 16, 3, 11), depth, bottomUp), faces));
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

TEST(SplitCubeCross, StretchAveragesTheCoveredArea) {
    // Faces of 7 pixels keep 3 columns within the seams: black, light, light. Each target column covers 3/7.
    QImage image = CrossImage(7, 7, 2, 2);
    QPainter painter(&image);
    painter.fillRect(2 + 7 + 2, 2 + 7 + 2, 1, 3, Qt::black);
    painter.fillRect(2 + 7 + 3, 2 + 7 + 2, 2, 3, QColor(240, 120, 60));
    painter.end();
    std::array<BitmapRef, 6> faces;
    ASSERT_TRUE(SplitCubeCross(FromImage(image, 32, false), faces));
    const Bitmap& face = *faces[4];
    for (int y = 0; y < 7; ++y) {
        EXPECT_EQ(PixelOf(face, 1, y), qRgb(0, 0, 0));
        EXPECT_EQ(PixelOf(face, 2, y), qRgb(160, 80, 40));
        EXPECT_EQ(PixelOf(face, 3, y), qRgb(240, 120, 60));
    }
}

TEST(SplitCubeCross, RefusesWhatHoldsNoCross) {
    std::array<BitmapRef, 6> faces;
    const auto fails = [&](const Bitmap& bitmap) {
        faces.fill(PatternBitmap(1, 1, 8, false, false));
        const bool split = SplitCubeCross(bitmap, faces);
        return !split && std::all_of(faces.begin(), faces.end(), [](const BitmapRef& face) { return !face; });
    };
    const auto oneColour = CreateBitmap(64, 48, 32, false);
    EXPECT_TRUE(fails(*oneColour));
    SetPixel(*oneColour, 10, 10, 0xFFFFFFFF);
    EXPECT_TRUE(fails(*oneColour));
    EXPECT_TRUE(fails(*PatternBitmap(1, 1, 24, false, false)));
    EXPECT_TRUE(fails(*PatternBitmap(4 * 4 + 1, 100, 24, false, false)));
    EXPECT_TRUE(fails(*PatternBitmap(100, 3 * 4 + 1, 24, false, false)));
    EXPECT_TRUE(fails(*PatternBitmap(32768, 20, 8, false, false)));  // six faces of 8191 x 8191
    EXPECT_TRUE(fails(Bitmap()));
    Bitmap cut = FromImage(CrossImage(20, 20, 1, 1), 24, false);
    cut.bits.pop_back();
    EXPECT_TRUE(fails(cut));
}

class LoadCubemapFacesTest : public testing::Test {
  protected:
    QString Face(int n) const { return CubeFacePath(dir.filePath(QStringLiteral("sky.png")), n); }
    void WriteFaces() const {
        for (int n = 0; n < 6; ++n)
            ASSERT_TRUE(WriteBytes(Face(n), Encode(PatternImage(8 + n, 4), "png")));
    }

    QTemporaryDir dir;
    std::array<BitmapRef, 6> faces;
};

TEST_F(LoadCubemapFacesTest, MissingFileLeavesItsSlotEmptyAndDamagedFileFailsAll) {
    WriteFaces();
    ASSERT_TRUE(QFile::remove(Face(3)));
    ASSERT_TRUE(LoadCubemapFaces(Face(0), faces));
    for (int n = 0; n < 6; ++n)
        EXPECT_EQ(faces[size_t(n)] ? faces[size_t(n)]->width : 0, n == 3 ? 0 : 8 + n) << n;

    ASSERT_TRUE(WriteBytes(Face(3), "no picture"));
    EXPECT_FALSE(LoadCubemapFaces(Face(0), faces));
    for (const BitmapRef& face : faces)
        EXPECT_FALSE(face);
}

TEST_F(LoadCubemapFacesTest, WithoutSecondFileSplitsTheCross) {
    WriteFaces();
    ASSERT_TRUE(QFile::remove(Face(1)));
    ASSERT_TRUE(WriteBytes(Face(0), Encode(CrossImage(16, 16, 4, 4), "png")));
    ASSERT_TRUE(LoadCubemapFaces(Face(0), faces));
    EXPECT_EQ(PixelOf(*faces[0], 3, 3), kFaceColours[0]);
    EXPECT_EQ(faces[5]->width, 16);

    EXPECT_FALSE(LoadCubemapFaces(dir.filePath(QStringLiteral("missing.png")), faces));
    EXPECT_FALSE(faces[0]);
}

}  // namespace
}  // namespace pixelgrove
