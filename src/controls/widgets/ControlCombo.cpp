#include "controls/widgets/ControlCombo.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <algorithm>

namespace pixelgrove {

namespace {

constexpr int kListMargin = 8;
constexpr int kTextMargin = 2;  // of the style, within the field

}  // namespace

ControlCombo::ControlCombo(QWidget* parent) : QComboBox(parent) {}

int ControlCombo::TextWidth() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width() -
           kTextMargin;
}

void ControlCombo::WidenList() {
    qsizetype longest = 0;
    for (int row = 0; row < count(); ++row)
        longest = std::max(longest, itemText(row).size());
    const double wanted = double(longest) * fontMetrics().horizontalAdvance(u'X') + kListMargin +
                          style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    view()->setMinimumWidth(int(std::min(wanted, screen()->availableGeometry().width() / 2.0)));
    view()->setTextElideMode(Qt::ElideRight);
    setMaxVisibleItems(std::max(1, count()));
}

void ControlCombo::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, TextWidth());
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

}  // namespace pixelgrove
