// Pictures on their way to and from another program, which knows nothing of the libraries used here.
#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>

#include "ImageTestSupport.h"
#include "persist/ImageFiles.h"

namespace pixelgrove {
namespace {

class OtherProgram : public ImageFileTest {
  protected:
    void SetUp() override {
        for (const auto& name : {QStringLiteral("magick"), QStringLiteral("convert")}) {
            program_ = QStandardPaths::findExecutable(name);
            if (!program_.isEmpty() && Run({QStringLiteral("-version")}).contains("ImageMagick")) return;
        }
        GTEST_SKIP() << "ImageMagick is not installed";
    }

    // What it writes to its standard output; empty when it fails.
    QByteArray Run(const QStringList& arguments, const QByteArray& input = {}) const {
        QProcess process;
        process.start(program_, arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60000) || process.exitCode() != 0) return {};
        return process.readAllStandardOutput();
    }

    // What it makes of the bytes alone, without the name: red, green and blue of each pixel, the top row
    // first.
    QByteArray Decode(const char* name) const {
        return Run({QStringLiteral("-"), QStringLiteral("-depth"), QStringLiteral("8"),
                    QStringLiteral("-alpha"), QStringLiteral("off"), QStringLiteral("-type"),
                    QStringLiteral("TrueColor"), QStringLiteral("rgb:-")},
                   Bytes(name));
    }
    QByteArray Properties(const char* name, const char* format) const {
        return Run({QStringLiteral("-"), QStringLiteral("-format"), QString::fromLatin1(format),
                    QStringLiteral("info:-")},
                   Bytes(name));
    }
    QByteArray Bytes(const char* name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static QByteArray RgbOf(const Bitmap& bitmap) {
        QByteArray bytes;
        for (int y = 0; y < bitmap.height; ++y) {
            for (int x = 0; x < bitmap.width; ++x) {
                const QRgb pixel = PixelOf(bitmap, x, y);
                for (const int part : {qRed(pixel), qGreen(pixel), qBlue(pixel)})
                    bytes.append(char(part));
            }
        }
        return bytes;
    }

    QString program_;
};

int LargestDifference(const QByteArray& a, const QByteArray& b) {
    if (a.size() != b.size() || a.isEmpty()) return 1000;
    int largest = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(int(uint8_t(a[i])) - int(uint8_t(b[i]))));
    return largest;
}

TEST_F(OtherProgram, ReadsWhatIsSavedHere) {
    const std::pair<const char*, const char*> cases[] = {{"f.png", "PNG"},   {"f.bmp", "BMP"},
                                                         {"f.dib", "BMP"},   {"f.rle", "BMP"},
                                                         {"f.tiff", "TIFF"}, {"f.gif", "GIF"}};
    for (const auto& [name, kind] : cases) {
        for (const int depth : {8, 24, 32}) {
            SCOPED_TRACE(testing::Message() << name << ' ' << depth);
            const auto bitmap = PatternBitmap(7, 5, depth, depth != 24, true);
            ASSERT_TRUE(SaveBitmapImage(*bitmap, Path(name)));
            const QByteArray properties = Properties(name, "%m %w %h");
            EXPECT_TRUE(properties.startsWith(kind) && properties.endsWith(" 7 5"))
                << properties.toStdString();
            EXPECT_EQ(LargestDifference(Decode(name), RgbOf(*bitmap)), 0);
        }
    }
}

TEST_F(OtherProgram, ReadsJpegFilesOfQuality95) {
    const auto bitmap = CreateFrameBitmap(67, 45);
    for (int y = 0; y < 45; ++y)
        for (int x = 0; x < 67; ++x)
            SetPixel(*bitmap, x, y, qRgba(x * 3, y * 5, 128, 0));
    ASSERT_TRUE(SaveBitmapImage(*bitmap, Path("f.jpg")));
    EXPECT_EQ(Properties("f.jpg", "%m %w %h %Q"), "JPEG 67 45 95");
    EXPECT_LE(LargestDifference(Decode("f.jpg"), RgbOf(*bitmap)), 12);
}

TEST_F(OtherProgram, SeesThePictureOfAPpmOnlyForTightRowsOfThreeBytes) {
    const auto tight = PatternBitmap(8, 6, 24, false, false);
    ASSERT_TRUE(SaveBitmapImage(*tight, Path("tight.ppm")));
    EXPECT_EQ(Decode("tight.ppm"), RgbOf(*tight));

    // A frame has four bytes a pixel, which are taken for pixels of three all the same.
    const auto frame = PatternBitmap(8, 6, 32, true, true);
    ASSERT_TRUE(SaveBitmapImage(*frame, Path("frame.ppm")));
    QByteArray memory(reinterpret_cast<const char*>(frame->bits.data()), 8 * 6 * 3);
    for (qsizetype i = 0; i < memory.size(); i += 3)
        std::swap(memory[i], memory[i + 2]);
    EXPECT_EQ(Decode("frame.ppm"), memory);
}

}  // namespace
}  // namespace pixelgrove
