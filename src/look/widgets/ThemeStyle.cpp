#include "look/widgets/ThemeStyle.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr double kCorner = 3;
constexpr int kSidePadding = 3;  // of texts in edits and boxes
constexpr int kMaxArrow = 9;     // pixels
constexpr int kMaxArrowColumn = 18;
constexpr int kFallbackTextHeight = 15;
constexpr int kFocusBorder = 2;  // pixels, where others have one

bool IsEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

bool HasFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus);
}

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

// Tool buttons have no frame until the mouse is over them, or they are down or checked.
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

// The column with the arrow, or with both, at the right of a box.
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

}  // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
        case PE_PanelButtonBevel:
            return DrawButton(*painter, *option);
        case PE_PanelButtonTool:
            return DrawToolButton(*painter, *option);
        case PE_FrameDefaultButton:
        case PE_FrameButtonBevel:
            return;
        case PE_PanelLineEdit:
            return DrawField(*painter, *option);
        case PE_FrameLineEdit:
            return DrawBox(*painter, option->rect, Qt::NoBrush, BorderOf(*option));
        case PE_Frame:
        case PE_FrameMenu:
        case PE_FrameWindow:
            return DrawBox(*painter, option->rect, Qt::NoBrush,
                           HasFocus(*option) ? FocusBorder() : Border{Theme().line}, 0);
        case PE_FrameFocusRect:
            // Buttons and boxes show the focus with their border, views with their selection.
            if (qobject_cast<const QPushButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
                qobject_cast<const QAbstractItemView*>(widget))
                return;
            return DrawBox(*painter, option->rect, Qt::NoBrush, FocusBorder(), 2);
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            return DrawCheckBox(*painter, *option);
        case PE_IndicatorMenuCheckMark:
            if (option->state.testFlag(State_On) || option->state.testFlag(State_Selected))
                DrawTick(*painter, Square(option->rect), InkOf(*option));
            return;
        case PE_IndicatorRadioButton:
            return DrawRadioButton(*painter, *option);
        case PE_IndicatorArrowUp:
        case PE_IndicatorSpinUp:
            return DrawArrow(*painter, option->rect, Qt::UpArrow, InkOf(*option));
        case PE_IndicatorArrowDown:
        case PE_IndicatorSpinDown:
            return DrawArrow(*painter, option->rect, Qt::DownArrow, InkOf(*option));
        case PE_IndicatorArrowLeft:
            return DrawArrow(*painter, option->rect, Qt::LeftArrow, InkOf(*option));
        case PE_IndicatorArrowRight:
            return DrawArrow(*painter, option->rect, Qt::RightArrow, InkOf(*option));
        case PE_IndicatorHeaderArrow:
            if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option))
                if (header->sortIndicator != QStyleOptionHeader::None)
                    DrawArrow(
                        *painter, option->rect,
                        header->sortIndicator == QStyleOptionHeader::SortUp ? Qt::UpArrow : Qt::DownArrow,
                        Theme().text);
            return;
        case PE_IndicatorBranch:
            if (option->state.testFlag(State_Children))
                DrawArrow(*painter, option->rect,
                          option->state.testFlag(State_Open) ? Qt::DownArrow : Qt::RightArrow,
                          InkOf(*option));
            return;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ThemeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    // Fusion's bevel has a shadow and moves the label; the panel above is all there is.
    if (element == CE_PushButtonBevel) {
        drawPrimitive(PE_PanelButtonCommand, option, painter, widget);
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (button && button->features.testFlag(QStyleOptionButton::HasMenu)) {
            QRect arrow = option->rect;
            arrow.setLeft(arrow.right() + 1 - ArrowColumn(arrow));
            DrawArrow(*painter, arrow, Qt::DownArrow, IsEnabled(*option) ? Theme().text : Theme().faintText);
        }
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo && control == CC_ComboBox)
        return DrawCombo(*painter, *combo);
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        spin && control == CC_SpinBox)
        return DrawSpin(*painter, *spin);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect ThemeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                 const QWidget* widget) const {
    const bool comboPart = part == SC_ComboBoxArrow || part == SC_ComboBoxEditField;
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo && control == CC_ComboBox && comboPart)
        return ComboRect(*combo, part);
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        spin && control == CC_SpinBox)
        return SpinRect(*spin, part);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

int ThemeStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_DefaultFrameWidth:
            // Room for the mark of the focus beside what scrolls.
            return qobject_cast<const QAbstractScrollArea*>(widget)
                       ? kFocusBorder
                       : QProxyStyle::pixelMetric(metric, option, widget);
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight: {
            // As large as the text beside it, which scales with its form.
            const int text = option ? option->fontMetrics.height()
                                    : (widget ? widget->fontMetrics().height() : kFallbackTextHeight);
            return std::max(6, text - 2);
        }
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
            return 4;
        case PM_ButtonMargin:
            return 6;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* result) const {
    switch (hint) {
        case SH_ComboBox_Popup:  // a list below the box that scrolls, so that its greatest height counts
        case SH_DialogButtonBox_ButtonsHaveIcons:
        case SH_EtchDisabledText:
        case SH_DitherDisabledText:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

QSize ThemeStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
    if (type == CT_PushButton) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        const int menu =
            button && button->features.testFlag(QStyleOptionButton::HasMenu) ? kMaxArrowColumn : 0;
        return contents + QSize(12 + menu, 9);
    }
    if (type == CT_ComboBox) return contents + QSize(2 * kSidePadding + kMaxArrowColumn + 4, 6);
    // The rows of an opened combo box would touch each other.
    if (type == CT_ItemViewItem && widget && widget->inherits("QComboBoxListView"))
        return QProxyStyle::sizeFromContents(type, option, contents, widget) + QSize(0, 6);
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

}  // namespace pixelgrove
