#include "ui/about/SiteButton.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr double kGridSide = 24;  // the pictures are given on a grid of this size

void DrawBook(QPainter& painter) {
    QPainterPath page;  // the right one
    page.moveTo(12, 6.5);
    page.cubicTo(14.5, 4.5, 18, 4, 21, 5);
    page.lineTo(21, 18);
    page.cubicTo(18, 17, 14.5, 17.5, 12, 19.5);
    painter.drawPath(page);
    painter.drawPath(QTransform(-1, 0, 0, 1, kGridSide, 0).map(page));
    painter.drawLine(QPointF(12, 6.5), QPointF(12, 19.5));
}

// A magnifying glass over lines of text.
void DrawGlossary(QPainter& painter) {
    for (const double y : {5.0, 9.0, 13.0})
        painter.drawLine(QPointF(3, y), QPointF(y < 9 ? 18 : 8, y));
    painter.drawLine(QPointF(3, 17), QPointF(9, 17));
    painter.drawEllipse(QPointF(15, 13), 4.5, 4.5);
    painter.drawLine(QPointF(18.3, 16.3), QPointF(21.5, 19.5));
}

// A heap in a box.
void DrawSandbox(QPainter& painter) {
    painter.drawPolyline(QPolygonF({{3, 8}, {3, 19}, {21, 19}, {21, 8}}));
    QPainterPath heap;
    heap.moveTo(5.5, 19);
    heap.cubicTo(9, 17, 9.5, 8, 12.5, 8);
    heap.cubicTo(15.5, 8, 15.5, 17, 18.5, 19);
    painter.drawPath(heap);
}

void DrawPlayer(QPainter& painter) {
    painter.drawRoundedRect(QRectF(3, 5, 18, 14), 2.5, 2.5);
    painter.setBrush(painter.pen().color());
    painter.drawPolygon(QPolygonF({{10, 9}, {10, 15}, {15, 12}}));
}

void DrawOne(QPainter& painter) {
    painter.drawEllipse(QPointF(12, 12), 8.5, 8.5);
    painter.drawPolyline(QPolygonF({{9.5, 9.5}, {12.5, 7.5}, {12.5, 16.5}}));
}

void DrawArrow(QPainter& painter, bool back) {
    if (back) {
        painter.translate(kGridSide, 0);
        painter.scale(-1, 1);
    }
    painter.drawLine(QPointF(4, 12), QPointF(19.5, 12));
    painter.drawPolyline(QPolygonF({{13, 5.5}, {19.5, 12}, {13, 18.5}}));
}

void Draw(QPainter& painter, SitePicture picture) {
    switch (picture) {
        case SitePicture::Book:
            return DrawBook(painter);
        case SitePicture::Glossary:
            return DrawGlossary(painter);
        case SitePicture::Sandbox:
            return DrawSandbox(painter);
        case SitePicture::Player:
            return DrawPlayer(painter);
        case SitePicture::One:
            return DrawOne(painter);
        case SitePicture::Back:
        case SitePicture::Forward:
            return DrawArrow(painter, picture == SitePicture::Back);
        case SitePicture::None:
            return;
    }
}

}  // namespace

void SiteButton::SetPicture(SitePicture picture) {
    picture_ = picture;
    update();
}

void SiteButton::paintEvent(QPaintEvent* event) {
    QPushButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = std::min(width(), height()) * 0.8 / kGridSide;
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale, scale);
    painter.translate(-kGridSide / 2, -kGridSide / 2);
    painter.setPen(QPen(isEnabled() ? Theme().text : Theme().faintText, 1.6, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    Draw(painter, picture_);
}

}  // namespace pixelgrove
