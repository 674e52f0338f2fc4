#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QTemporaryDir>
#include <csignal>

#include "ImageTestSupport.h"
#include "persist/ImageFiles.h"

namespace pixelgrove {
namespace {

class SaveBitmapImageTest : public testing::Test {
  protected:
    QString Path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }

    static QByteArray Read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;
};

TEST_F(SaveBitmapImageTest, FirstRuleFoundAnywhereInPathDecides) {
    for (const char* folder : {"a.png", "a.jpg", "my.external", "x.TIFF"})
        ASSERT_TRUE(QDir(dir.path()).mkdir(QString::fromLatin1(folder)));
    const QByteArray jpeg = "\xFF\xD8", png = "\x89PNG", gif = "GIF8", tiff = "II*", ppm = "P6\n", bmp = "BM";
    const struct {
        const char* name;
        QByteArray start;  // empty: refused
    } cases[] = {
        {"frame.jpg", jpeg},
        {"frame.jpeg", jpeg},
        {"frame.JPG", jpeg},
        {"frame.png", png},
        {"frame.Png", png},
        {"frame.gif", gif},
        {"frame.tif", tiff},
        {"frame.tiff", tiff},
        {"frame.ppm", ppm},
        {"frame.bmp", bmp},
        {"frame.dib", bmp},
        {"frame.rle", bmp},
        {"a.png/frame.jpg", jpeg},
        {"a.jpg/frame.png", jpeg},
        {"a.png/frame.xyz", png},
        {"a.png/frame.ppm", png},
        {"x.TIFF/frame.bmp", tiff},
        {"frame.png.ext", png},
        {"a.png\\back.jpg", jpeg},
        {"frame.ext", {}},
        {"frame.ful", {}},
        {"frame.fst", {}},
        {"my.external/frame.ppm", {}},
        {"my.external/frame.bmp", {}},
        {"frame.xyz", {}},
        {"frame", {}},
        {"png", {}},
    };
    const auto bitmap = PatternBitmap(4, 4, 32, true, true);
    for (const auto& c : cases) {
        const QString path = Path(c.name);
        const QString onDisk = QString(path).replace(u'\\', u'/');
        EXPECT_EQ(SaveBitmapImage(*bitmap, path), !c.start.isEmpty()) << c.name;
        if (c.start.isEmpty())
            EXPECT_FALSE(QFileInfo::exists(onDisk)) << c.name;
        else
            EXPECT_TRUE(Read(onDisk).startsWith(c.start)) << c.name;
    }
    EXPECT_FALSE(SaveBitmapImage(*bitmap, QString()));
}

TEST_F(SaveBitmapImageTest, LosslessFormatsGiveBackThePictureUprightAndOpaque) {
    for (const char* name : {"f.png", "f.bmp", "f.tif"}) {
        for (const int depth : {8, 24, 32}) {
            for (const bool bottomUp : {false, true}) {
                for (const int width : {1, 7, 8}) {
                    SCOPED_TRACE(testing::Message()
                                 << name << ' ' << depth << ' ' << bottomUp << ' ' << width);
                    const auto bitmap = PatternBitmap(width, 5, depth, bottomUp, true);
                    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path(name)));
                    const QImage back(Path(name));
                    ASSERT_EQ(back.size(), QSize(width, 5));
                    EXPECT_FALSE(back.hasAlphaChannel());
                    for (int y = 0; y < 5; ++y)
                        for (int x = 0; x < width; ++x)
                            EXPECT_EQ(back.pixel(x, y), PixelOf(*bitmap, x, y) | 0xFF000000u)
                                << x << ',' << y;
                }
            }
        }
    }
}

double MeanError(const QImage& image, const Bitmap& bitmap) {
    double sum = 0;
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x) {
            const QRgb a = image.pixel(x, y), b = PixelOf(bitmap, x, y);
            sum +=
                std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
        }
    }
    return sum / (3.0 * bitmap.width * bitmap.height);
}

std::shared_ptr<Bitmap> GradientBitmap(int width, int height) {
    auto bitmap = CreateFrameBitmap(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            SetPixel(*bitmap, x, y, qRgba(x * 255 / width, y * 255 / height, 128, 0));
    return bitmap;
}

TEST_F(SaveBitmapImageTest, LossyFormatsComeClose) {
    const auto bitmap = GradientBitmap(67, 45);
    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.jpg")));
    EXPECT_LT(MeanError(QImage(Path("f.jpg")), *bitmap), 2.0);
    QImageReader jpeg(Path("f.jpg"));
    EXPECT_NEAR(jpeg.quality() < 0 ? 95 : jpeg.quality(), 95, 1);

    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.gif")));
    EXPECT_LT(MeanError(QImage(Path("f.gif")), *bitmap), 20.0);
}

TEST_F(SaveBitmapImageTest, GifOfFewColoursIsExact) {
    for (const int colours : {1, 2, 3, 200, 256}) {
        auto bitmap = CreateFrameBitmap(37, 23);
        for (int y = 0; y < 23; ++y)
            for (int x = 0; x < 37; ++x) {
                const int i = (y * 37 + x) % colours;
                SetPixel(*bitmap, x, y, qRgb(i, 255 - i, i * 7 & 0xFF));
            }
        ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.gif")));
        EXPECT_EQ(MeanError(QImage(Path("f.gif")), *bitmap), 0.0) << colours;
    }
}

TEST_F(SaveBitmapImageTest, PpmTakesMemoryForPixelsOfThreeBytes) {
    auto bitmap = CreateFrameBitmap(2, 2);
    for (size_t i = 0; i < bitmap->bits.size(); ++i)
        bitmap->bits[i] = uint8_t('a' + i);
    const std::vector<uint8_t> before = bitmap->bits;
    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.ppm")));
    EXPECT_EQ(Read(Path("f.ppm")), QByteArray("P6\n2 2\n255\ncbafedihglkj"));
    EXPECT_EQ(bitmap->bits, before);

    const auto rgb = PatternBitmap(8, 3, 24, false, false);
    ASSERT_TRUE(SaveBitmapImage(*rgb, Path("f.ppm")));
    EXPECT_EQ(MeanError(QImage(Path("f.ppm")), *rgb), 0.0);

    // An 8-bit bitmap has too few bytes for this treatment.
    EXPECT_FALSE(SaveBitmapImage(*PatternBitmap(8, 3, 8, false, false), Path("g.ppm")));
    EXPECT_FALSE(QFileInfo::exists(Path("g.ppm")));
}

TEST_F(SaveBitmapImageTest, FailedWriteLeavesNoFile) {
    // A limit on the length of files stands in for a full disk.
    struct FileSizeLimit {
        explicit FileSizeLimit(rlim_t bytes) {
            oldHandler = std::signal(SIGXFSZ, SIG_IGN);
            getrlimit(RLIMIT_FSIZE, &oldLimit);
            const rlimit limit{bytes, oldLimit.rlim_max};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        ~FileSizeLimit() {
            setrlimit(RLIMIT_FSIZE, &oldLimit);
            std::signal(SIGXFSZ, oldHandler);
        }
        void (*oldHandler)(int);
        rlimit oldLimit{};
    };
    const auto bitmap = PatternBitmap(64, 64, 32, true, false);
    for (const char* name : {"f.png", "f.bmp", "f.jpg", "f.tif", "f.gif"}) {
        ASSERT_TRUE(WriteBytes(Path(name), "older"));
        const FileSizeLimit limit(600);
        EXPECT_FALSE(SaveBitmapImage(*bitmap, Path(name))) << name;
        EXPECT_FALSE(QFileInfo::exists(Path(name))) << name;
    }
}

TEST_F(SaveBitmapImageTest, TargetsThatAreNoFilesAreLeftAlone) {
    const auto bitmap = PatternBitmap(8, 8, 32, true, false);
    EXPECT_FALSE(SaveBitmapImage(*bitmap, Path("nowhere/f.png")));

    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("folder.png")));
    EXPECT_FALSE(SaveBitmapImage(*bitmap, Path("folder.png")));
    EXPECT_TRUE(QFileInfo(Path("folder.png")).isDir());

    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), Path("device.png")));
    EXPECT_FALSE(SaveBitmapImage(*bitmap, Path("device.png")));
    EXPECT_TRUE(QFileInfo(Path("device.png")).isSymLink());
}

TEST_F(SaveBitmapImageTest, IncompleteBitmapIsRefused) {
    auto bitmap = PatternBitmap(8, 8, 32, true, false);
    bitmap->bits.pop_back();
    for (const char* name : {"f.png", "f.ppm", "f.gif"}) {
        EXPECT_FALSE(SaveBitmapImage(*bitmap, Path(name)));
        EXPECT_FALSE(QFileInfo::exists(Path(name)));
    }
    EXPECT_TRUE(ToQImage(*bitmap).isNull());
}

TEST(ToQImage, GivesUprightOpaqueCopy) {
    for (const int depth : {8, 24, 32}) {
        auto bitmap = PatternBitmap(5, 3, depth, depth != 24, true);
        const QImage image = ToQImage(*bitmap);
        EXPECT_EQ(image.format(), QImage::Format_RGB32);
        const Bitmap copy = *bitmap;
        std::fill(bitmap->bits.begin(), bitmap->bits.end(), uint8_t(0));
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 5; ++x)
                EXPECT_EQ(image.pixel(x, y), PixelOf(copy, x, y) | 0xFF000000u) << depth;
    }
}

}  // namespace
}  // namespace pixelgrove
