// ResultPainter: draws the cells of the browser's list: plain text in the list's colours. The style and the
// program's style sheet would take too long for a page of rows in each step of a scroll. Main thread.
#pragma once

#include <QStyledItemDelegate>

namespace pixelgrove {

class ResultPainter : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // The same height for every row, whatever stands in it.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace pixelgrove
