#include "library/widgets/ResultPainter.h"

#include <QPainter>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kRowMargin = 2;  // above and below the letters
constexpr int kSideMargin = 4;

}  // namespace

void ResultPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    const ThemeColours& theme = Theme();
    const QRect cell = option.rect.adjusted(kSideMargin, 0, -kSideMargin, 0);
    const QString text = option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, cell.width());
    painter->setFont(option.font);
    if (option.state.testFlag(QStyle::State_Selected)) {
        painter->fillRect(option.rect, theme.accent);
        painter->setPen(theme.accentText);
    } else {
        const uint32_t ground = theme.rows[UiColour::ListViewTextBackground];
        if (ground != theme.rows[UiColour::ListViewBackground])
            painter->fillRect(option.rect, FromBgr(ground));
        painter->setPen(FromBgr(theme.rows[UiColour::ListViewText]));
    }
    painter->drawText(cell, Qt::AlignVCenter | Qt::TextSingleLine, text);
}

QSize ResultPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {0, option.fontMetrics.height() + 2 * kRowMargin};
}

}  // namespace pixelgrove
