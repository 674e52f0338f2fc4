#include "ui/channels/ChannelPictures.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "core/Stages.h"
#include "render/widgets/BitmapImage.h"

namespace pixelgrove {

namespace {

// All drawings are made on a square of this side.
constexpr int kSide = 256;

// The bitmap's own memory as an image; only as long as the bitmap lives.
QImage ViewOf(const Bitmap& bitmap) {
    if (!bitmap.IsComplete()) return {};
    QImage::Format format = QImage::Format_Invalid;
    if (bitmap.bitsPerPixel == 8) format = QImage::Format_Grayscale8;
    if (bitmap.bitsPerPixel == 24) format = QImage::Format_BGR888;
    if (bitmap.bitsPerPixel == 32) format = QImage::Format_RGB32;
    if (format == QImage::Format_Invalid) return {};
    return {bitmap.bits.data(), bitmap.width, bitmap.height, qsizetype(bitmap.StrideBytes()), format};
}

void FillGround(QPainter& painter, const char* top, const char* bottom) {
    QLinearGradient ground(0, 0, 0, kSide);
    ground.setColorAt(0, QColor(QLatin1String(top)));
    ground.setColorAt(1, QColor(QLatin1String(bottom)));
    painter.fillRect(0, 0, kSide, kSide, ground);
}

void PaintUnused(QPainter& painter) {
    FillGround(painter, "#565b63", "#454a51");
    const QColor faint(QStringLiteral("#9298a1"));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faint, 7, Qt::CustomDashLine, Qt::RoundCap));
    QPen dashes = painter.pen();
    dashes.setDashPattern({3.2, 2.6});
    painter.setPen(dashes);
    painter.drawRoundedRect(QRectF(28, 28, 200, 200), 26, 26);
    painter.setPen(QPen(faint, 12, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QPointF(128, 128), 46, 46);
    painter.drawLine(QPointF(95, 161), QPointF(161, 95));
}

// One cube in isometric view: the top corner of its upper face and the length of an edge.
void PaintCube(QPainter& painter, QPointF top, double edge, const QColor& colour) {
    const double dx = edge * std::sqrt(3.0) / 2, dy = edge / 2;
    const QPointF right(dx, dy), left(-dx, dy), down(0, edge);
    const struct {
        QPolygonF face;
        int lightness;
    } faces[] = {
        {{{top, top + right, top + right + left, top + left}}, 135},
        {{{top + left, top + left + right, top + left + right + down, top + left + down}}, 100},
        {{{top + right, top + right + left, top + right + left + down, top + right + down}}, 72},
    };
    for (const auto& [face, lightness] : faces) {
        painter.setBrush(lightness >= 100 ? colour.lighter(lightness) : colour.darker(10000 / lightness));
        painter.drawPolygon(face);
    }
}

void PaintCubemap(QPainter& painter) {
    FillGround(painter, "#27313f", "#141a23");
    const QPointF top(128, 26), right(88, 51), left(-88, 51), down(0, 102);
    painter.setPen(QPen(QColor(255, 255, 255, 210), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor(QStringLiteral("#8fd0ff")));
    painter.drawPolygon(QPolygonF({top, top + right, top + right + left, top + left}));
    // The sides show one horizon that runs round the cube: sky, hills, water.
    for (const bool isLeft : {true, false}) {
        const QPointF start = top + (isLeft ? left : right), along = isLeft ? right : left;
        QLinearGradient side(start, start + down);
        const auto at = [&](double place, const char* colour) {
            const QColor full{QLatin1String(colour)};
            side.setColorAt(place, isLeft ? full : full.darker(135));
        };
        at(0, "#6ebcf7");
        at(0.42, "#dff1ff");
        at(0.46, "#e8b25a");
        at(0.62, "#b0662f");
        at(0.66, "#2f7f86");
        at(1, "#123f4d");
        // Straight down the screen, whatever the slant of the edges.
        side.setStart(QPointF(128, 52));
        side.setFinalStop(QPointF(128, 230));
        painter.setBrush(side);
        painter.drawPolygon(QPolygonF({start, start + along, start + along + down, start + down}));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 240, 180, 230));
    painter.drawEllipse(QPointF(142, 72), 22, 12);
}

void PaintVolume(QPainter& painter) {
    FillGround(painter, "#2c2540", "#171224");
    painter.setPen(QPen(QColor(20, 14, 34, 150), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    constexpr int kCubes = 4;
    constexpr double kEdge = 29;
    const double dx = kEdge * std::sqrt(3.0) / 2, dy = kEdge / 2;
    for (int z = 0; z < kCubes; ++z) {  // from below
        for (int y = 0; y < kCubes; ++y) {
            for (int x = 0; x < kCubes; ++x) {
                // A corner is taken out so that the inside shows.
                if (z >= 2 && x >= 2 && y >= 2) continue;
                const double depth = std::hypot(x - 3.5, y - 3.5, z - 3.5) / 6.1;
                QColor colour = QColor::fromHsvF(float(0.52 + 0.36 * depth), 0.62f, 0.95f);
                const QPointF top(128 + (x - y) * dx, 118 + (x + y) * dy - z * kEdge);
                PaintCube(painter, top - QPointF(0, 4), kEdge, colour.darker(120));
            }
        }
    }
}

void PaintKeyboard(QPainter& painter) {
    FillGround(painter, "#5d6672", "#3e454f");
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 90));
    painter.drawRoundedRect(QRectF(14, 66, 228, 136), 18, 18);
    painter.setBrush(QColor(QStringLiteral("#e9ecf0")));
    painter.drawRoundedRect(QRectF(14, 58, 228, 136), 18, 18);
    // The widths of the keys by rows, in units of a quarter of a plain key; 0 ends a row.
    constexpr int kRows[3][7] = {{4, 4, 4, 4, 4, 4, 0}, {6, 4, 4, 4, 6, 0, 0}, {5, 14, 5, 0, 0, 0, 0}};
    constexpr double kUnit = 204.0 / 24;
    for (int row = 0; row < 3; ++row) {
        double x = 26;
        for (int key = 0; key < 7 && kRows[row][key] != 0; ++key) {
            const double width = kRows[row][key] * kUnit;
            const QRectF cap(x + 3, 68 + row * 39, width - 6, 33);
            const bool isPressed = row == 1 && key == 2;
            painter.setBrush(QColor(isPressed ? QStringLiteral("#f08a24") : QStringLiteral("#4a525d")));
            painter.drawRoundedRect(cap, 7, 7);
            painter.setBrush(QColor(255, 255, 255, isPressed ? 90 : 40));
            painter.drawRoundedRect(QRectF(cap.x(), cap.y(), cap.width(), 12), 6, 6);
            x += width;
        }
    }
}

void PaintWebcam(QPainter& painter) {
    FillGround(painter, "#cfe0ea", "#9db6c4");
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(QStringLiteral("#2e353d")));
    QPainterPath foot;
    foot.moveTo(106, 180);
    foot.lineTo(150, 180);
    foot.lineTo(160, 214);
    foot.lineTo(96, 214);
    painter.drawPath(foot);
    painter.drawRoundedRect(QRectF(58, 208, 140, 22), 11, 11);
    painter.setBrush(QColor(QStringLiteral("#3b444e")));
    painter.drawEllipse(QPointF(128, 112), 84, 84);
    painter.setBrush(QColor(QStringLiteral("#1a1f25")));
    painter.drawEllipse(QPointF(128, 112), 58, 58);
    QRadialGradient glass(QPointF(112, 94), 62);
    glass.setColorAt(0, QColor(QStringLiteral("#9fe3ff")));
    glass.setColorAt(0.35, QColor(QStringLiteral("#2a86c9")));
    glass.setColorAt(1, QColor(QStringLiteral("#0a2038")));
    painter.setBrush(glass);
    painter.drawEllipse(QPointF(128, 112), 44, 44);
    painter.setBrush(QColor(255, 255, 255, 220));
    painter.drawEllipse(QPointF(110, 92), 13, 10);
    painter.setBrush(QColor(QStringLiteral("#ff4d3d")));
    painter.drawEllipse(QPointF(128, 41), 7, 7);
}

void PaintSpectrum(QPainter& painter) {
    FillGround(painter, "#14202b", "#0a1118");
    constexpr double kHeights[] = {0.62, 0.92, 0.78, 0.55, 0.7, 0.46, 0.33, 0.5, 0.28, 0.16};
    QLinearGradient level(0, 232, 0, 30);
    level.setColorAt(0, QColor(QStringLiteral("#1fbf75")));
    level.setColorAt(0.55, QColor(QStringLiteral("#e6d33c")));
    level.setColorAt(1, QColor(QStringLiteral("#f2543d")));
    painter.setPen(Qt::NoPen);
    painter.setBrush(level);
    for (int i = 0; i < 10; ++i) {
        const double height = kHeights[i] * 206;
        painter.drawRoundedRect(QRectF(17 + i * 22.6, 232 - height, 17, height), 4, 4);
    }
    QPainterPath wave(QPointF(0, 84));
    for (int x = 0; x <= kSide; x += 4) {
        const double turn = x * 0.0491;  // two whole waves
        wave.lineTo(x, 84 + 30 * std::sin(turn) * (0.6 + 0.4 * std::sin(turn * 2.7)));
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(235, 248, 255, 225), 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(wave);
}

}  // namespace

QImage SmoothPicture(const Bitmap& bitmap, QSize pixels) {
    const QImage whole = ViewOf(bitmap);
    if (whole.isNull() || pixels.isEmpty()) return {};
    // The conversion also copies where no scaling does: the bitmap may go before the image.
    const QImage scaled = whole.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage picture = bitmap.bottomUp ? scaled.mirrored() : scaled.copy();
    return std::move(picture).convertToFormat(QImage::Format_RGB32);
}

QImage QuickPicture(const Bitmap& bitmap, QSize pixels) {
    if (pixels.isEmpty()) return {};
    const QSize some(std::min(bitmap.width, pixels.width() * 2),
                     std::min(bitmap.height, pixels.height() * 2));
    return StretchedImage(bitmap, some.width(), some.height())
        .scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool PaintChannelPicture(QPainter& painter, const QRect& area, uint32_t kind) {
    void (*paint)(QPainter&) = nullptr;
    if (kind == kChannelUnused) paint = PaintUnused;
    if (kind == kChannelCubeA) paint = PaintCubemap;
    if (kind == kChannelVolume) paint = PaintVolume;
    if (kind == kChannelKeyboard) paint = PaintKeyboard;
    if (kind == kChannelWebcam) paint = PaintWebcam;
    if (kind == kChannelAudio) paint = PaintSpectrum;
    if (!paint) return false;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.topLeft());
    painter.scale(double(area.width()) / kSide, double(area.height()) / kSide);
    paint(painter);
    painter.restore();
    return true;
}

}  // namespace pixelgrove
