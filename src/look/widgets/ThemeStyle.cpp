#include "look/widgets/ThemeStyle.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "look/widgets/Theme.h"
#include "look/widgets/ThemePainting.h"

namespace pixelgrove {

namespace {

constexpr int kFallbackTextHeight = 15;

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
            return DrawFieldBorder(*painter, *option);
        case PE_Frame:
        case PE_FrameMenu:
        case PE_FrameWindow:
            return DrawFrame(*painter, *option);
        case PE_FrameFocusRect:
            // Buttons and boxes show the focus with their border, views with their selection.
            if (qobject_cast<const QPushButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
                qobject_cast<const QAbstractItemView*>(widget))
                return;
            return DrawFocusFrame(*painter, *option);
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            return DrawCheckBox(*painter, *option);
        case PE_IndicatorMenuCheckMark:
            if (option->state.testFlag(State_On) || option->state.testFlag(State_Selected))
                DrawMenuTick(*painter, *option);
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
