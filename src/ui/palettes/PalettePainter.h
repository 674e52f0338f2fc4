// PalettePainter: paints the rows of a PaletteModel: the name, and the palette's colours stretched over the
// cell. Main thread.
#pragma once

#include <QStyledItemDelegate>

namespace pixelgrove {

class PaletteModel;

class PalettePainter : public QStyledItemDelegate {
    Q_OBJECT

  public:
    // Both outlive this object; the flag may change at any time, and the list is then to be painted anew.
    PalettePainter(const PaletteModel& model, const bool& isInterpolated, QObject* parent)
        : QStyledItemDelegate(parent), model_(model), isInterpolated_(isInterpolated) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    const PaletteModel& model_;
    const bool& isInterpolated_;
};

}  // namespace pixelgrove
