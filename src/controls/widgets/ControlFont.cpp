#include "controls/widgets/ControlFont.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontMetrics>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kProbePixels = 100;
constexpr double kLineSpace = 1.4;       // the height of a part for each of its text
constexpr double kLeastNarrowing = 0.6;  // of the fitted font
constexpr int kListMargin = 8;

}  // namespace

QFont FittedFont(int smallestHeight) {
    QFont font = FormFont();
    font.setPixelSize(kProbePixels);
    const double probe = QFontMetrics(font).size(Qt::TextSingleLine, QStringLiteral("X")).height();
    const double ratio = probe / std::max(1, smallestHeight) * kLineSpace;
    font.setPixelSize(std::max(1, int(kProbePixels / ratio)));
    return font;
}

QFont NarrowedFont(QFont font, const QString& text, int width) {
    const int fitted = font.pixelSize();
    const int least = std::max(1, int(fitted * kLeastNarrowing));
    for (int pixels = fitted; pixels >= least; --pixels) {
        font.setPixelSize(pixels);
        if (QFontMetrics(font).horizontalAdvance(text) <= width) break;
    }
    return font;
}

int ComboTextWidth(const QSize& box) {
    QStyleOptionComboBox option;
    option.rect = QRect(QPoint(), box);
    return QApplication::style()
               ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField)
               .width() -
           4;
}

void WidenList(QComboBox& combo) {
    qsizetype longest = 0;
    for (int row = 0; row < combo.count(); ++row)
        longest = std::max(longest, combo.itemText(row).size());
    const int letter = combo.fontMetrics().horizontalAdvance(u'X');
    const int margin = kListMargin + combo.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int wanted = int(std::min<qsizetype>(longest * letter + margin, QWIDGETSIZE_MAX));
    combo.view()->setMinimumWidth(std::min(wanted, combo.screen()->availableGeometry().width() / 2));
    combo.setMaxVisibleItems(std::max(1, combo.count()));
}

}  // namespace pixelgrove
