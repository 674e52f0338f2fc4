#include <gtest/gtest.h>

#include <map>
#include <string>

#include "codecs/GifWriter.h"
#include "codecs/ImageIntegrity.h"
#include "media/ImageFiles.h"
#include "support/CpuTime.h"
#include "support/ImageTestSupport.h"

namespace pixelgrove {
namespace {

class LoadImageFileTest : public ImageFileTest {
  protected:
    BitmapRef LoadBytes(const QByteArray& bytes, const char* name = "picture") const {
        return WriteBytes(Path(name), bytes) ? LoadImageFile(Path(name)) : nullptr;
    }
};

TEST_F(LoadImageFileTest, KeepsDepthWhereRowsFitAndGivesPixelsAsStored) {
    const struct {
        const char* format;
        QImage::Format stored;
        bool alpha;
        int width;
        int depth;
    } cases[] = {
        {"png", QImage::Format_Grayscale8, false, 8, 8},  {"png", QImage::Format_Grayscale8, false, 7, 32},
        {"png", QImage::Format_RGB32, false, 8, 24},      {"png", QImage::Format_ARGB32, true, 5, 32},
        {"png", QImage::Format_Mono, false, 8, 32},       {"png", QImage::Format_RGBX64, false, 8, 32},
        {"bmp", QImage::Format_RGB32, false, 7, 32},      {"bmp", QImage::Format_Indexed8, false, 8, 32},
        {"ppm", QImage::Format_RGB32, false, 8, 24},      {"tiff", QImage::Format_RGB32, false, 8, 24},
        {"jpeg", QImage::Format_Grayscale8, false, 16, 8}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.format << " format " << c.stored << " width " << c.width);
        const QImage image = PatternImage(c.width, 6, c.alpha).convertToFormat(c.stored);
        // A name that lies: the content counts.
        const BitmapRef bitmap = LoadBytes(Encode(image, c.format), "picture.jpg");
        ASSERT_TRUE(bitmap);
        ASSERT_EQ(QSize(bitmap->width, bitmap->height), image.size());
        EXPECT_EQ(bitmap->bitsPerPixel, c.depth);
        EXPECT_FALSE(bitmap->bottomUp);
        ASSERT_TRUE(bitmap->IsComplete());
        EXPECT_LE(MeanError(image, *bitmap), qstrcmp(c.format, "jpeg") == 0 ? 2.0 : 0.0);
        for (int y = 0; y < 6; ++y)
            EXPECT_EQ(qAlpha(PixelOf(*bitmap, y % c.width, y)), qAlpha(image.pixel(y % c.width, y)));
    }
}

TEST_F(LoadImageFileTest, RefusesFilesCutShort) {
    const QImage image = PatternImage(64, 48);
    QBuffer progressive;
    QImageWriter writer(&progressive, "jpeg");
    writer.setProgressiveScanWrite(true);
    ASSERT_TRUE(writer.write(image));
    std::map<std::string, QByteArray> files = {
        {"bmp8", Encode(image.convertToFormat(QImage::Format_Indexed8), "bmp")},
        {"gif", EncodeGif(image)},
        {"progressive jpeg", progressive.data()},
    };
    for (const char* format : {"png", "bmp", "jpeg", "tiff", "ppm", "webp"})
        files[format] = Encode(image, format);
    for (const auto& [name, bytes] : files) {
        EXPECT_TRUE(LoadBytes(bytes)) << name;
        for (const qsizetype length : {bytes.size() / 8, bytes.size() / 2, bytes.size() - 20})
            EXPECT_FALSE(LoadBytes(bytes.left(length))) << name << ' ' << length;
        for (int length = 0; length < 80; ++length)
            EXPECT_FALSE(LoadBytes(bytes.left(length))) << name << ' ' << length;
    }
}

TEST_F(LoadImageFileTest, EndMarkOfThumbnailDoesNotMakeJpegWhole) {
    const QByteArray thumbnail = Encode(PatternImage(8, 8), "jpeg");
    QByteArray segment("\xFF\xE5", 2);
    segment += char((thumbnail.size() + 2) >> 8);
    segment += char((thumbnail.size() + 2) & 0xFF);
    QByteArray file = Encode(PatternImage(64, 48), "jpeg");
    file.insert(2, segment + thumbnail);
    EXPECT_TRUE(LoadBytes(file));
    EXPECT_TRUE(LoadBytes(file + thumbnail));
    EXPECT_FALSE(LoadBytes(file.left(file.size() / 2)));
    // Behind the cut stands something else that has an end mark.
    const QByteArray cut = file.chopped(2);
    for (const QByteArray& rest : {QByteArray("\xFF\x20\0\2\xFF\xD9", 6), thumbnail})
        EXPECT_FALSE(IsImageFileWhole(cut + rest, "jpeg"));
    EXPECT_FALSE(IsImageFileWhole(QByteArray("\xFF\xD8\xFF\xD9", 4), "jpeg"));
}

// The width and height in a file, overwritten; the bytes behind stay few.
QByteArray WithSize(QByteArray file, qsizetype at, int width, int height, int fieldBytes) {
    for (const int value : {width, height})
        for (int i = 0; i < fieldBytes; ++i)
            file[at++] = char(value >> 8 * i);
    return file;
}

TEST_F(LoadImageFileTest, RefusesLyingSizesQuickly) {
    const auto ppm = [](int width, int height) {
        return "P6\n" + QByteArray::number(width) + ' ' + QByteArray::number(height) + "\n255\n" +
               QByteArray(300, 'x');
    };
    ASSERT_TRUE(LoadBytes(ppm(10, 10)));
    const QByteArray bmp = Encode(PatternImage(8, 8), "bmp");
    const QByteArray gif = EncodeGif(PatternImage(2, 2));
    const int start = test::ThreadCpuMs();
    for (const auto& [width, height] : {std::pair(60000, 60000), {11000, 11000}, {32768, 4000}, {40000, 1}}) {
        SCOPED_TRACE(testing::Message() << width << 'x' << height);
        EXPECT_FALSE(LoadBytes(ppm(width, height)));
        EXPECT_FALSE(LoadBytes(WithSize(bmp, 18, width, height, 4)));
        EXPECT_FALSE(LoadBytes(WithSize(bmp, 18, width, -height, 4)));
        EXPECT_FALSE(LoadBytes(WithSize(gif, 6, width, height, 2)));
    }
    EXPECT_FALSE(LoadBytes(WithSize(bmp, 18, 0x7FFFFFFF, int(0x80000000), 4)));
    EXPECT_FALSE(LoadBytes(WithSize(bmp, 18, 0, 8, 4)));
    EXPECT_LT(test::ThreadCpuMs() - start, 3000);
}

TEST_F(LoadImageFileTest, LargePicturesNeedBytesToMatch) {
    EXPECT_TRUE(IsPlausibleImageSize(QSize(4096, 4096), 100));
    EXPECT_FALSE(IsPlausibleImageSize(QSize(11000, 11000), 10000));
    EXPECT_TRUE(IsPlausibleImageSize(QSize(11000, 11000), 13000));
}

TEST_F(LoadImageFileTest, RefusesWhatIsNoPicture) {
    EXPECT_FALSE(LoadImageFile(dir.path()));
    EXPECT_FALSE(LoadBytes("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>", "drawing.png"));
    // A format that the decoders know and this program does not take.
    const QByteArray icon = Encode(PatternImage(16, 16), "ico");
    ASSERT_FALSE(icon.isEmpty());
    EXPECT_FALSE(LoadBytes(icon));
}

TEST_F(LoadImageFileTest, FailuresNameTheFileAndSayWhy) {
    const QByteArray png = Encode(PatternImage(64, 48), "png");  // 24 bits
    const QByteArray wide = Encode(QImage(kMaxBitmapSide + 1, 1, QImage::Format_Mono), "png");
    const struct {
        QByteArray bytes;
        qint64 maxBytes;
        const char* words;  // empty: it loads
    } cases[] = {{png, 64 * 48 * 3, ""},
                 {png, 64 * 48 * 3 - 1, "would take the media of the project beyond 2 GB of memory"},
                 {png.chopped(20), kMaxMediaBytes, "is damaged or cut short"},
                 {"text", kMaxMediaBytes, "is no picture that can be read"},
                 {wide, kMaxMediaBytes, "has more pixels than a picture may have"}};
    const QString path = Path("a\nb.png");
    for (const auto& c : cases) {
        ASSERT_TRUE(WriteBytes(path, c.bytes));
        QString reason;
        EXPECT_EQ(LoadImageFile(path, &reason, c.maxBytes) != nullptr, *c.words == 0);
        const QString words = u'"' + Path("a?b.png") + QStringLiteral("\" ") + QLatin1String(c.words);
        EXPECT_EQ(reason, *c.words == 0 ? QString() : words);
    }
    QString reason;
    EXPECT_FALSE(LoadImageFile(Path("missing.png"), &reason));
    EXPECT_TRUE(reason.endsWith(QStringLiteral("missing.png\" can't be read: No such file or directory")));
}

}  // namespace
}  // namespace pixelgrove
