#include "library/widgets/ResultModel.h"

#include <algorithm>
#include <utility>

namespace pixelgrove {

namespace {

constexpr const char16_t* kTitles[] = {u"ID", u"Name", u"Likes", u"Size", u"User", u"Description"};

// On one line, whatever the author wrote.
QString OneLine(QString text) {
    for (QChar& unit : text)
        if (unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
            unit == QChar::ParagraphSeparator)
            unit = u' ';
    return text;
}

}  // namespace

ResultModel::ResultModel(const SearchContext& context, QObject* parent)
    : QAbstractTableModel(parent), context_(context) {}

void ResultModel::IndexRows() {
    rows_.assign(context_.results.size(), -1);
    for (size_t row = 0; row < places_.size(); ++row)
        rows_[places_[row]] = int(row);
}

void ResultModel::ShowPage() {
    beginResetModel();
    places_ = RowsOfPage(context_);
    IndexRows();
    endResetModel();
}

void ResultModel::Sort(const SortState& sort) {
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<size_t> kept;
    for (const QModelIndex& index : before)
        kept.push_back(PlaceOf(index.row()));
    SortRows(context_, sort, places_);
    IndexRows();
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(index(rows_[kept[size_t(i)]], before[i].column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

void ResultModel::DropRemoved() {
    beginResetModel();
    std::erase_if(places_, [this](size_t place) { return context_.results[place].id.isEmpty(); });
    IndexRows();
    endResetModel();
}

void ResultModel::NoteChange(size_t place) {
    const int row = place < rows_.size() ? rows_[place] : -1;
    if (row >= 0) Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int ResultModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(places_.size());
}

int ResultModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(std::size(kTitles));
}

QVariant ResultModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole) return {};
    return OneLine(CellText(context_.results[PlaceOf(index.row())], ResultColumn(index.column())));
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return QString::fromUtf16(kTitles[section]);
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

}  // namespace pixelgrove
