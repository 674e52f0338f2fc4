#include "media/CubeFaces.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <vector>

#include "media/ImageFiles.h"
#include "platform/Files.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

// Keeps the seams between neighbouring faces out of both.
constexpr int kSeamInset = 2;

// A part of a picture, rows counted from the top.
struct Area {
    int x = 0, y = 0, width = 0, height = 0;
};

// Blue, green, red, alpha from the low byte up. Pixels of a depth without alpha are opaque.
uint32_t PixelAt(const Bitmap& bitmap, int x, int memoryRow) {
    const uint8_t* row = bitmap.Row(memoryRow);
    if (bitmap.bitsPerPixel == 32) {
        uint32_t pixel = 0;
        std::memcpy(&pixel, row + size_t(x) * 4, 4);
        return pixel;
    }
    if (bitmap.bitsPerPixel == 24) {
        const uint8_t* p = row + size_t(x) * 3;
        return 0xFF000000u | uint32_t(p[2]) << 16 | uint32_t(p[1]) << 8 | p[0];
    }
    return 0xFF000000u | uint32_t(row[x]) * 0x010101u;
}

int MemoryRow(const Bitmap& bitmap, int rowFromTop) {
    return bitmap.bottomUp ? bitmap.height - 1 - rowFromTop : rowFromTop;
}

// What lies between the outermost pixels that are no background. Those on the right and at the bottom are
// themselves the end and not part of the area: existing crosses were drawn for this cut.
std::optional<Area> FindContent(const Bitmap& bitmap) {
    const uint32_t background = PixelAt(bitmap, 0, MemoryRow(bitmap, bitmap.height - 1));
    int left = bitmap.width, right = -1, top = bitmap.height, bottom = -1;
    for (int y = 0; y < bitmap.height; ++y) {
        const int memoryRow = MemoryRow(bitmap, y);
        for (int x = 0; x < bitmap.width; ++x) {
            if (PixelAt(bitmap, x, memoryRow) == background) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    if (right <= left || bottom <= top) return std::nullopt;
    return Area{left, top, right - left, bottom - top};
}

// The run of source cells under one target cell, when `source` cells are stretched over `target` cells.
// Lengths are in units of 1/target of a source cell, so all arithmetic is whole.
struct Cover {
    int first = 0;
    std::vector<int64_t> lengths;
};

std::vector<Cover> CoversOf(int source, int target) {
    std::vector<Cover> covers(static_cast<size_t>(target));
    for (int i = 0; i < target; ++i) {
        const int64_t begin = int64_t(i) * source;
        const int64_t end = begin + source;
        Cover& cover = covers[size_t(i)];
        cover.first = int(begin / target);
        for (int64_t cell = cover.first; cell * target < end; ++cell)
            cover.lengths.push_back(std::min(end, (cell + 1) * target) - std::max(begin, cell * target));
    }
    return covers;
}

// Each target pixel is the average of the source area it covers. Null when memory is short.
std::shared_ptr<Bitmap> StretchToSquare(const Bitmap& bitmap, const Area& area, int side) {
    std::shared_ptr<Bitmap> face = CreateBitmap(side, side, 32, false);
    if (!face) return nullptr;
    const std::vector<Cover> columns = CoversOf(area.width, side);
    const std::vector<Cover> rows = CoversOf(area.height, side);
    const int64_t whole = int64_t(area.width) * area.height;

    for (int y = 0; y < side; ++y) {
        const Cover& row = rows[size_t(y)];
        uint8_t* out = face->Row(y);
        for (int x = 0; x < side; ++x, out += 4) {
            const Cover& column = columns[size_t(x)];
            std::array<int64_t, 4> sums{};
            for (size_t j = 0; j < row.lengths.size(); ++j) {
                const int memoryRow = MemoryRow(bitmap, area.y + row.first + int(j));
                for (size_t i = 0; i < column.lengths.size(); ++i) {
                    const uint32_t pixel = PixelAt(bitmap, area.x + column.first + int(i), memoryRow);
                    const int64_t weight = row.lengths[j] * column.lengths[i];
                    for (size_t c = 0; c < 4; ++c)
                        sums[c] += weight * int64_t(pixel >> (8 * c) & 0xFF);
                }
            }
            for (size_t c = 0; c < 4; ++c)
                out[c] = uint8_t((sums[c] + whole / 2) / whole);
        }
    }
    return face;
}

enum class Split { Done, NoCross, TooLarge, NoMemory };

Split SplitContent(const Bitmap& bitmap, const Area& content, std::array<BitmapRef, 6>& faces,
                   qint64 maxBytes) {
    const int faceWidth = content.width / 4;
    const int faceHeight = content.height / 3;
    if (faceWidth <= 2 * kSeamInset || faceHeight <= 2 * kSeamInset) return Split::NoCross;

    // A long thin strip would otherwise blow up into faces far larger than the picture.
    const int side = std::max(faceWidth, faceHeight);
    if (qint64(side) * side * 4 * qint64(faces.size()) > maxBytes) return Split::TooLarge;

    constexpr std::array<std::array<int, 2>, 6> kCells = {{{2, 1}, {0, 1}, {1, 0}, {1, 2}, {1, 1}, {3, 1}}};
    for (size_t i = 0; i < faces.size(); ++i) {
        const Area area{content.x + kCells[i][0] * faceWidth + kSeamInset,
                        content.y + kCells[i][1] * faceHeight + kSeamInset, faceWidth - 2 * kSeamInset,
                        faceHeight - 2 * kSeamInset};
        faces[i] = StretchToSquare(bitmap, area, side);
        if (!faces[i]) return Split::NoMemory;
    }
    return Split::Done;
}

Split SplitCross(const Bitmap& bitmap, std::array<BitmapRef, 6>& faces, qint64 maxBytes) {
    faces.fill(nullptr);
    const int depth = bitmap.bitsPerPixel;
    if ((depth != 8 && depth != 24 && depth != 32) || !bitmap.IsComplete()) return Split::NoCross;
    const std::optional<Area> content = FindContent(bitmap);
    if (!content) return Split::NoCross;

    Split split = Split::NoMemory;
    try {
        split = SplitContent(bitmap, *content, faces, maxBytes);
    } catch (const std::bad_alloc&) {
        split = Split::NoMemory;
    }
    if (split != Split::Done) faces.fill(nullptr);
    return split;
}

QString WordsFor(Split split, const QString& path, qint64 maxBytes) {
    if (split == Split::NoCross) return QStringLiteral("%1 is no unfolded cube").arg(InQuotes(path));
    if (split == Split::NoMemory)
        return QStringLiteral("there is not enough memory for %1").arg(InQuotes(path));
    if (maxBytes < qint64(kMaxBitmapBytes)) return BeyondMediaMemory(path);
    return QStringLiteral("the faces of %1 are too large").arg(InQuotes(path));
}

// False when a file is there but can't be read.
bool LoadSeparateFaces(const QString& path, std::array<BitmapRef, 6>& faces, QString* reason,
                       qint64 maxBytes) {
    for (int n = 0; n < int(faces.size()); ++n) {
        const QString facePath = CubeFacePath(path, n);
        if (!IsPlainFile(facePath)) {
            if (reason) *reason = QStringLiteral("%1 is missing").arg(InQuotes(facePath));
            continue;
        }
        const BitmapRef face = LoadImageFile(facePath, reason, maxBytes);
        if (!face) return false;
        maxBytes -= qint64(face->bits.size());
        faces[size_t(n)] = face;
    }
    return true;
}

}  // namespace

QString CubeFacePath(const QString& path, int n) {
    if (n == 0) return path;
    const qsizetype nameStart = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    const qsizetype stemEnd = dot >= nameStart ? dot : path.size();
    return path.left(stemEnd) + u'_' + QString::number(n) + path.mid(stemEnd);
}

bool LoadCubemapFaces(const QString& path, std::array<BitmapRef, 6>& faces, QString* reason,
                      qint64 maxBytes) {
    faces.fill(nullptr);
    if (IsPlainFile(CubeFacePath(path, 1))) {
        if (LoadSeparateFaces(path, faces, reason, maxBytes)) return true;
        faces.fill(nullptr);
        return false;
    }
    const BitmapRef cross = LoadImageFile(path, reason);
    if (!cross) return false;
    const Split split = SplitCross(*cross, faces, std::min(maxBytes, qint64(kMaxBitmapBytes)));
    if (split == Split::Done) return true;
    if (reason) *reason = WordsFor(split, path, maxBytes);
    return false;
}

bool SplitCubeCross(const Bitmap& bitmap, std::array<BitmapRef, 6>& faces) {
    return SplitCross(bitmap, faces, qint64(kMaxBitmapBytes)) == Split::Done;
}

}  // namespace pixelgrove
