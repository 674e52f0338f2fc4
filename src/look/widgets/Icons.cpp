#include "look/widgets/Icons.h"

#include <QPainter>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kGridSide = 16;  // the shapes are given on a grid of this size

QColor ColourOf(PlaybackIcon kind) {
    switch (kind) {
        case PlaybackIcon::Play:
            return QColor(0x5f, 0xc9, 0x78);
        case PlaybackIcon::Record:
            return QColor(0xe2, 0x5c, 0x5c);
        case PlaybackIcon::Start:
        case PlaybackIcon::Stop:
        case PlaybackIcon::Pause:
            break;
    }
    return Theme().text;
}

void Draw(QPainter& painter, PlaybackIcon kind) {
    switch (kind) {
        case PlaybackIcon::Start:  // back to the beginning
            painter.drawRect(QRectF(2.5, 3, 2.5, 10));
            painter.drawPolygon(QPolygonF({{14, 3}, {14, 13}, {6, 8}}));
            break;
        case PlaybackIcon::Play:
            painter.drawPolygon(QPolygonF({{4, 2.5}, {13.5, 8}, {4, 13.5}}));
            break;
        case PlaybackIcon::Stop:
            painter.drawRect(QRectF(3.5, 3.5, 9, 9));
            break;
        case PlaybackIcon::Record:
            painter.drawEllipse(QRectF(3, 3, 10, 10));
            break;
        case PlaybackIcon::Pause:
            painter.drawRect(QRectF(4, 3, 3, 10));
            painter.drawRect(QRectF(9, 3, 3, 10));
            break;
    }
}

QPixmap Render(PlaybackIcon kind, const QColor& colour, int scale) {
    QPixmap pixmap(kGridSide * scale, kGridSide * scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    Draw(painter, kind);
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

}  // namespace

QIcon MakePlaybackIcon(PlaybackIcon kind) {
    QIcon icon;
    for (int scale : {1, 2, 3}) {
        icon.addPixmap(Render(kind, ColourOf(kind), scale), QIcon::Normal);
        icon.addPixmap(Render(kind, Theme().faintText, scale), QIcon::Disabled);
    }
    return icon;
}

}  // namespace pixelgrove
