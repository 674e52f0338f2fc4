#include "render/widgets/BitmapImage.h"

#include <vector>

namespace pixelgrove {

QImage StretchedImage(const Bitmap& bitmap, int width, int height) {
    const int depth = bitmap.bitsPerPixel;
    if (!bitmap.IsComplete() || width <= 0 || height <= 0 || (depth != 8 && depth != 24 && depth != 32))
        return {};
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull()) return {};
    const size_t bytes = size_t(depth) / 8;
    std::vector<size_t> columns(size_t(width), 0);
    for (int x = 0; x < width; ++x) {
        columns[size_t(x)] = size_t(int64_t(x) * bitmap.width / width) * bytes;
    }
    // Grey repeats its one byte for all three colours.
    const size_t green = depth == 8 ? 0 : 1, red = depth == 8 ? 0 : 2;
    for (int y = 0; y < height; ++y) {
        int row = int(int64_t(y) * bitmap.height / height);
        const uint8_t* source = bitmap.Row(bitmap.bottomUp ? bitmap.height - 1 - row : row);
        auto* target = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const uint8_t* pixel = source + columns[size_t(x)];
            target[x] = qRgb(pixel[red], pixel[green], pixel[0]);
        }
    }
    return image;
}

}  // namespace pixelgrove
