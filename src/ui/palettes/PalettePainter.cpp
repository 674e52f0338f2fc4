#include "ui/palettes/PalettePainter.h"

#include <QPainter>
#include <algorithm>

#include "ui/palettes/PaletteModel.h"

namespace pixelgrove {

namespace {

constexpr int kMaxStripHeight = 16;
constexpr int kRowMargin = 2;
constexpr int kSideMargin = 4;

}  // namespace

void PalettePainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (index.column() != int(PaletteColumn::Preview)) return;
    const QImage strip = model_.Preview(index.row(), isInterpolated_);
    QRect place = option.rect.adjusted(kSideMargin, 0, -kSideMargin, 0);
    place.setHeight(std::min(place.height(), kMaxStripHeight));
    place.moveTop(option.rect.top() + (option.rect.height() - place.height()) / 2);
    // Each colour keeps its edges: smooth ones are what interpolation shows.
    if (!strip.isNull() && place.width() > 0) painter->drawImage(place, strip);
}

QSize PalettePainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {0, std::max(option.fontMetrics.height(), kMaxStripHeight) + 2 * kRowMargin};
}

}  // namespace pixelgrove
