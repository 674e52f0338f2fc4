#include "look/widgets/ThemePainting.h"

#include <QAbstractSpinBox>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr double kCorner = 3;
constexpr int kMaxArrow = 9;  // pixels

struct Border {
    QColor colour;
    int width = 1;  // pixels
};

Border FocusBorder() {
    return {Theme().text, kFocusBorder};
}

Border BorderOf(const QStyleOption& option) {
    if (!IsEnabled(option)) return {Theme().button};
    return HasFocus(option) ? FocusBorder() : Border{Theme().line};
}

// A border, sharp at any scale, around a ground.
void DrawBox(QPainter& painter, const QRect& rect, const QBrush& ground, const Border& border,
             double corner = kCorner) {
    if (rect.width() < 2 || rect.height() < 2) return;
    const double half = border.width / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(border.colour, border.width, Qt::SolidLine, Qt::SquareCap,
                        corner > 0 ? Qt::BevelJoin : Qt::MiterJoin));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), corner, corner);
    painter.restore();
}

QColor ButtonGround(const QStyleOption& option) {
    if (!IsEnabled(option)) return option.state.testFlag(QStyle::State_On) ? Theme().button : Theme().panel;
    if (option.state & (QStyle::State_Sunken | QStyle::State_On)) return Theme().buttonDown;
    if (option.state.testFlag(QStyle::State_MouseOver)) return Theme().buttonHover;
    return option.palette.color(QPalette::Button);
}

// A square in the middle of what may be no square.
QRect Square(const QRect& rect) {
    const int side = std::min(rect.width(), rect.height());
    QRect square(0, 0, side, side);
    square.moveCenter(rect.center());
    return square;
}

void DrawTick(QPainter& painter, const QRect& box, const QColor& colour) {
    const double side = box.width();
    QPainterPath tick;
    tick.moveTo(side * 0.24, side * 0.52);
    tick.lineTo(side * 0.43, side * 0.72);
    tick.lineTo(side * 0.78, side * 0.28);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, std::max(1.0, side * 0.14), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.translate(box.topLeft());
    painter.drawPath(tick);
    painter.restore();
}

QColor IndicatorBorder(const QStyleOption& option) {
    if (!IsEnabled(option)) return Theme().line;
    return option.state.testFlag(QStyle::State_MouseOver) ? Theme().accent : Theme().faintText;
}

}  // namespace

void DrawFrame(QPainter& painter, const QStyleOption& option) {
    DrawBox(painter, option.rect, Qt::NoBrush, HasFocus(option) ? FocusBorder() : Border{Theme().line}, 0);
}

void DrawFocusFrame(QPainter& painter, const QStyleOption& option) {
    DrawBox(painter, option.rect, Qt::NoBrush, FocusBorder(), 2);
}

void DrawFieldBorder(QPainter& painter, const QStyleOption& option) {
    DrawBox(painter, option.rect, Qt::NoBrush, BorderOf(option));
}

void DrawButton(QPainter& painter, const QStyleOption& option) {
    Border border = BorderOf(option);
    if (IsEnabled(option) && option.state.testFlag(QStyle::State_On) && !HasFocus(option))
        border.colour = Theme().accent;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    if (button && IsEnabled(option) && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
        !HasFocus(option))
        border.colour = Theme().faintText;
    DrawBox(painter, option.rect, ButtonGround(option), border);
}

void DrawToolButton(QPainter& painter, const QStyleOption& option) {
    const bool raised =
        option.state.testFlag(QStyle::State_Raised) || !option.state.testFlag(QStyle::State_AutoRaise);
    if (raised || (option.state & (QStyle::State_Sunken | QStyle::State_On)) || HasFocus(option))
        DrawButton(painter, option);
}

QColor InkOf(const QStyleOption& option) {
    if (!IsEnabled(option)) return Theme().faintText;
    return option.state.testFlag(QStyle::State_Selected) ? Theme().accentText : Theme().text;
}

void DrawArrow(QPainter& painter, const QRect& rect, Qt::ArrowType direction, const QColor& colour) {
    const double size = std::min({double(kMaxArrow), rect.width() * 0.7, rect.height() * 0.7});
    if (size < 2) return;
    const double half = size / 2;
    const double depth = size * 0.28;
    QPolygonF shape;
    switch (direction) {
        case Qt::UpArrow:
            shape = {{-half, depth}, {half, depth}, {0, -depth}};
            break;
        case Qt::LeftArrow:
            shape = {{depth, -half}, {depth, half}, {-depth, 0}};
            break;
        case Qt::RightArrow:
            shape = {{-depth, -half}, {-depth, half}, {depth, 0}};
            break;
        default:
            shape = {{-half, -depth}, {half, -depth}, {0, depth}};
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.translate(QRectF(rect).center());
    painter.drawPolygon(shape);
    painter.restore();
}

void DrawCheckBox(QPainter& painter, const QStyleOption& option) {
    const QRect box = Square(option.rect);
    const QColor ink = IsEnabled(option) ? Theme().text : Theme().faintText;
    DrawBox(painter, box, option.state.testFlag(QStyle::State_Sunken) ? Theme().buttonDown : Theme().field,
            {IndicatorBorder(option)}, 2);
    if (option.state.testFlag(QStyle::State_On))
        DrawTick(painter, box, ink);
    else if (option.state.testFlag(QStyle::State_NoChange))
        painter.fillRect(box.adjusted(box.width() / 4, box.width() / 4, -box.width() / 4, -box.width() / 4),
                         ink);
}

void DrawRadioButton(QPainter& painter, const QStyleOption& option) {
    const QRect box = Square(option.rect);
    DrawBox(painter, box, Theme().field, {IndicatorBorder(option)}, box.width() / 2.0);
    if (!option.state.testFlag(QStyle::State_On)) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(IsEnabled(option) ? Theme().text : Theme().faintText);
    const double inset = box.width() * 0.27;
    painter.drawEllipse(QRectF(box).adjusted(inset, inset, -inset, -inset));
    painter.restore();
}

void DrawField(QPainter& painter, const QStyleOption& option) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    const bool readOnly = option.state.testFlag(QStyle::State_ReadOnly);
    const QBrush ground =
        readOnly ? option.palette.brush(QPalette::Window) : option.palette.brush(QPalette::Base);
    if (frame && frame->lineWidth <= 0)
        painter.fillRect(option.rect, ground);
    else
        DrawBox(painter, option.rect, ground, BorderOf(option));
}

int ArrowColumn(const QRect& rect) {
    return std::clamp(rect.height() * 3 / 4, 6, kMaxArrowColumn);
}

QRect ComboRect(const QStyleOptionComboBox& option, QStyle::SubControl part) {
    const int column = ArrowColumn(option.rect);
    QRect rect = option.rect;
    if (part == QStyle::SC_ComboBoxArrow)
        rect.setLeft(rect.right() + 1 - column);
    else
        rect.adjust(kSidePadding, 1, -column, -1);
    return QStyle::visualRect(option.direction, option.rect, rect);
}

QRect SpinRect(const QStyleOptionSpinBox& option, QStyle::SubControl part) {
    const bool buttons = option.buttonSymbols != QAbstractSpinBox::NoButtons;
    const int column = buttons ? ArrowColumn(option.rect) : 0;
    QRect rect = option.rect.adjusted(1, 1, -1, -1);
    const int middle = rect.top() + rect.height() / 2;
    switch (part) {
        case QStyle::SC_SpinBoxUp:
            rect.setLeft(rect.right() + 1 - column);
            rect.setBottom(middle - 1);
            break;
        case QStyle::SC_SpinBoxDown:
            rect.setLeft(rect.right() + 1 - column);
            rect.setTop(middle);
            break;
        case QStyle::SC_SpinBoxEditField:
            rect.setRight(rect.right() - column);
            break;
        default:
            return option.rect;
    }
    return QStyle::visualRect(option.direction, option.rect, rect);
}

void DrawCombo(QPainter& painter, const QStyleOptionComboBox& option) {
    if (option.frame || !option.editable) {
        QStyleOptionComboBox box = option;
        if (option.editable)
            DrawBox(painter, box.rect, box.palette.brush(QPalette::Base), BorderOf(box));
        else
            DrawBox(painter, box.rect, ButtonGround(box), BorderOf(box));
    }
    DrawArrow(painter, ComboRect(option, QStyle::SC_ComboBoxArrow), Qt::DownArrow,
              IsEnabled(option) ? Theme().text : Theme().faintText);
}

void DrawSpin(QPainter& painter, const QStyleOptionSpinBox& option) {
    DrawBox(painter, option.rect, option.palette.brush(QPalette::Base), BorderOf(option));
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons) return;
    const struct {
        QStyle::SubControl part;
        QAbstractSpinBox::StepEnabledFlag step;
        Qt::ArrowType direction;
    } arrows[] = {{QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, Qt::UpArrow},
                  {QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, Qt::DownArrow}};
    for (const auto& arrow : arrows) {
        const QRect rect = SpinRect(option, arrow.part);
        const bool possible = IsEnabled(option) && option.stepEnabled.testFlag(arrow.step);
        if (possible && option.activeSubControls == arrow.part)
            painter.fillRect(
                rect, option.state.testFlag(QStyle::State_Sunken) ? Theme().buttonDown : Theme().buttonHover);
        DrawArrow(painter, rect, arrow.direction, possible ? Theme().text : Theme().faintText);
    }
}

void DrawMenuTick(QPainter& painter, const QStyleOption& option) {
    DrawTick(painter, Square(option.rect), InkOf(option));
}

}  // namespace pixelgrove
