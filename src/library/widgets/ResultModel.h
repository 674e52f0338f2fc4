// ResultModel: the rows of a SearchContext's page for the browser's list. The rules are those of
// library/ResultRows.h; this keeps the order on screen. Main thread.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "library/ResultRows.h"

namespace pixelgrove {

class ResultModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    // The context outlives this object; who changes it says so by the calls below.
    explicit ResultModel(const SearchContext& context, QObject* parent = nullptr);

    // The rows of context.page, in the order of the results.
    void ShowPage();
    // Brings the rows into the order of the last click; what was selected stays so.
    void Sort(const SortState& sort);
    // Leaves out rows whose record has been removed.
    void DropRemoved();
    // The record of that place has other texts.
    void NoteChange(size_t place);

    // Of a row that is there: where in the results its record is.
    size_t PlaceOf(int row) const { return places_[size_t(row)]; }
    const std::vector<size_t>& Places() const { return places_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    const SearchContext& context_;
    std::vector<size_t> places_;  // by row
    std::vector<int> rows_;       // by place, -1 for none

    void IndexRows();
};

}  // namespace pixelgrove
