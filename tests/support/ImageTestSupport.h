// Pictures and files that the image tests make for themselves.
#pragma once

#include <gtest/gtest.h>

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QString>
#include <QTemporaryDir>

#include "media/Bitmap.h"

namespace pixelgrove {

inline QString S(const char* text) {
    return QString::fromLatin1(text);
}

class ImageFileTest : public testing::Test {
  protected:
    QString Path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }

    QTemporaryDir dir;
};

inline bool WriteBytes(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray Encode(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer;
    writer.setDevice(&buffer);
    writer.setFormat(format);
    writer.setQuality(100);
    return writer.write(image) ? bytes : QByteArray();
}

// Varied in both directions and by channel, so that swaps, flips and skews show; hard to compress.
inline QRgb PatternAt(int x, int y, bool alpha) {
    const uint32_t noise = (uint32_t(x) * 2654435761u) ^ (uint32_t(y) * 2246822519u) ^ 0x9E3779B9u;
    return qRgba(int(noise >> 24), int(noise >> 13 & 0xFF), int(noise >> 5 & 0xFF),
                 alpha ? int(noise >> 18 & 0xFF) | 1 : 255);
}

inline QImage PatternImage(int width, int height, bool alpha = false) {
    QImage image(width, height, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, PatternAt(x, y, alpha));
    return image;
}

// Rows counted from the top, whichever way they run in memory.
inline QRgb PixelOf(const Bitmap& bitmap, int x, int y) {
    const uint8_t* row = bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - y : y);
    if (bitmap.bitsPerPixel == 8) return qRgb(row[x], row[x], row[x]);
    const uint8_t* p = row + x * bitmap.bitsPerPixel / 8;
    return bitmap.bitsPerPixel == 32 ? qRgba(p[2], p[1], p[0], p[3]) : qRgb(p[2], p[1], p[0]);
}

inline void SetPixel(Bitmap& bitmap, int x, int y, QRgb colour) {
    uint8_t* row = bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - y : y);
    if (bitmap.bitsPerPixel == 8) {
        row[x] = uint8_t(qGreen(colour));
        return;
    }
    uint8_t* p = row + x * bitmap.bitsPerPixel / 8;
    p[0] = uint8_t(qBlue(colour));
    p[1] = uint8_t(qGreen(colour));
    p[2] = uint8_t(qRed(colour));
    if (bitmap.bitsPerPixel == 32) p[3] = uint8_t(qAlpha(colour));
}

inline std::shared_ptr<Bitmap> FromImage(const QImage& image, int depth, bool bottomUp) {
    std::shared_ptr<Bitmap> bitmap = CreateBitmap(image.width(), image.height(), depth, bottomUp);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            SetPixel(*bitmap, x, y, image.pixel(x, y));
    return bitmap;
}

inline std::shared_ptr<Bitmap> PatternBitmap(int width, int height, int depth, bool bottomUp, bool alpha) {
    return FromImage(PatternImage(width, height, alpha), depth, bottomUp);
}

// Of one colour channel, without alpha.
inline double MeanError(const QImage& image, const Bitmap& bitmap) {
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

}  // namespace pixelgrove
