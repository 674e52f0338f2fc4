#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <vector>

#include "media/ImageFiles.h"
#include "platform/Files.h"
#include "support/ImageTestSupport.h"

namespace pixelgrove {
namespace {

using SaveBitmapImageTest = ImageFileTest;

TEST_F(SaveBitmapImageTest, FirstRuleFoundAnywhereInPathDecides) {
    for (const char* folder : {"a.png", "a.jpg", "my.external", "x.TIFF"})
        ASSERT_TRUE(QDir(dir.path()).mkdir(QString::fromLatin1(folder)));
    const QByteArray jpeg = "\xFF\xD8", png = "\x89PNG", gif = "GIF8", tiff = "II*", ppm = "P6\n", bmp = "BM";
    const struct {
        const char* name;
        QByteArray start;  // empty: refused
    } cases[] = {
        {"frame.JPG", jpeg},
        {"frame.jpeg", jpeg},
        {"frame.Png", png},
        {"frame.gif", gif},
        {"frame.tif", tiff},
        {"frame.ppm", ppm},
        {"frame.bmp", bmp},
        {"frame.dib", bmp},
        {"frame.rle", bmp},
        {"a.png/frame.jpg", jpeg},
        {"a.jpg/frame.png", jpeg},
        {"x.TIFF/frame.bmp", tiff},
        {"frame.png.ext", png},
        {"a.png\\back.jpg", jpeg},
        {"frame.ext", {}},
        {"frame.ful", {}},
        {"my.external/frame.ppm", {}},
        {"frame.xyz", {}},
    };
    const auto bitmap = PatternBitmap(4, 4, 32, true, true);
    for (const auto& c : cases) {
        const QString path = Path(c.name);
        const QString onDisk = QString(path).replace(u'\\', u'/');
        EXPECT_EQ(SaveBitmapImage(*bitmap, path), !c.start.isEmpty()) << c.name;
        EXPECT_EQ(QFileInfo::exists(onDisk), !c.start.isEmpty()) << c.name;
        EXPECT_TRUE(ReadWholeFile(onDisk).value_or("").startsWith(c.start)) << c.name;
    }
}

TEST_F(SaveBitmapImageTest, LosslessFormatsGiveBackThePictureUprightAndOpaque) {
    for (const char* name : {"f.png", "f.bmp", "f.tif", "f.gif"}) {
        for (const int depth : {8, 24, 32}) {
            SCOPED_TRACE(testing::Message() << name << ' ' << depth);
            const auto bitmap = PatternBitmap(7, 5, depth, depth != 24, true);
            ASSERT_TRUE(SaveBitmapImage(*bitmap, Path(name)));
            const QImage back(Path(name));
            ASSERT_EQ(back.size(), QSize(7, 5));
            EXPECT_FALSE(back.hasAlphaChannel());
            EXPECT_EQ(MeanError(back, *bitmap), 0.0);
        }
    }
}

// Fewer rows than are packed at a time, widths around what is filtered at a time, rows wider than a block.
TEST_F(SaveBitmapImageTest, APngOfAnySizeIsWhole) {
    std::vector<QSize> sizes = {
        {3, 5}, {32, 3}, {33, 2}, {64, 1}, {131, 70}, {400, 301}, {kMaxBitmapSide, 2}};
    for (int height = 1; height <= 9; ++height)
        sizes.emplace_back(1 + height % 3, height);
    for (const QSize size : sizes) {
        for (const int depth : {8, 24, 32}) {
            for (const bool bottomUp : {false, true}) {
                const auto bitmap = PatternBitmap(size.width(), size.height(), depth, bottomUp, true);
                ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.png")));
                const QImage back(Path("f.png"));
                ASSERT_EQ(back.size(), size);
                EXPECT_EQ(MeanError(back, *bitmap), 0.0)
                    << size.width() << 'x' << size.height() << ' ' << depth;
            }
        }
    }
}

TEST_F(SaveBitmapImageTest, LossyFormatsComeClose) {
    const auto bitmap = CreateFrameBitmap(67, 45);
    for (int y = 0; y < 45; ++y)
        for (int x = 0; x < 67; ++x)
            SetPixel(*bitmap, x, y, qRgba(x * 3, y * 5, 128, 0));
    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.jpg")));
    EXPECT_LT(MeanError(QImage(Path("f.jpg")), *bitmap), 2.0);
    const QByteArray jpeg = ReadWholeFile(Path("f.jpg")).value_or("");
    EXPECT_EQ(jpeg.mid(jpeg.indexOf("\xFF\xDB") + 5, 4), QByteArray("\2\1\1\1")) << "the table of quality 95";
    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.gif")));
    EXPECT_LT(MeanError(QImage(Path("f.gif")), *bitmap), 20.0);
}

TEST_F(SaveBitmapImageTest, PpmTakesMemoryForPixelsOfThreeBytes) {
    auto bitmap = CreateFrameBitmap(2, 2);
    for (size_t i = 0; i < bitmap->bits.size(); ++i)
        bitmap->bits[i] = uint8_t('a' + i);
    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.ppm")));
    EXPECT_EQ(ReadWholeFile(Path("f.ppm")), QByteArray("P6\n2 2\n255\ncbafedihglkj"));

    // An 8-bit bitmap has too few bytes for this treatment.
    EXPECT_FALSE(SaveBitmapImage(*PatternBitmap(8, 3, 8, false, false), Path("g.ppm")));
    EXPECT_FALSE(QFileInfo::exists(Path("g.ppm")));
}

TEST_F(SaveBitmapImageTest, TargetsThatAreNoFilesAndIncompleteBitmapsAreRefused) {
    const auto bitmap = PatternBitmap(8, 8, 32, true, false);
    EXPECT_FALSE(SaveBitmapImage(*bitmap, Path("nowhere/f.png")));

    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("folder.png")));
    EXPECT_FALSE(SaveBitmapImage(*bitmap, Path("folder.png")));
    EXPECT_TRUE(QFileInfo(Path("folder.png")).isDir());

    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), Path("device.png")));
    EXPECT_FALSE(SaveBitmapImage(*bitmap, Path("device.png")));
    EXPECT_TRUE(QFileInfo(Path("device.png")).isSymLink());

    bitmap->bits.pop_back();
    for (const char* name : {"f.png", "f.ppm", "f.gif"}) {
        EXPECT_FALSE(SaveBitmapImage(*bitmap, Path(name))) << "incomplete";
        EXPECT_FALSE(QFileInfo::exists(Path(name)));
    }
}

}  // namespace
}  // namespace pixelgrove
