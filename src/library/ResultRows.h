// The rules of the list that shows a SearchContext: its pages, what its rows say, how a column sorts them.
//
// Pure; the thread that owns the context.
#pragma once

#include <QString>
#include <QStringView>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "library/ShaderSearch.h"

namespace pixelgrove {

enum class ResultColumn { Id, Name, Likes, Size, User, Description };

// 0 without results.
uint32_t PageCount(const SearchContext& context);

// The page that is step pages behind the one that the page edit shows (1 where that is no number), kept
// between 1 and PageCount; context.page where there are no pages.
uint32_t SteppedPage(const SearchContext& context, QStringView shown, int step);

// The page that the user typed: at least 1, and at most one behind the last full page, which is one more than
// PageCount where the last page is full. context.page where the text is no number.
uint32_t TypedPage(const SearchContext& context, QStringView typed);

// Places in context.results of the rows on context.page, in order; records with an empty id have no row.
std::vector<size_t> RowsOfPage(const SearchContext& context);

// What a row says in a column: "<uncached>" where there is nothing to say, as in every column but that of the
// id while the record has no name.
QString CellText(const ShaderInfo& info, ResultColumn column);

// Below 0 when the first comes first in a column that is sorted upwards: texts by their UTF-16 units, size
// with the smallest first, likes with the highest first.
int CompareRecords(const ShaderInfo& first, const ShaderInfo& second, ResultColumn column);

// How the list was sorted last. Lives on from one search to the next.
struct SortState {
    std::optional<ResultColumn> column;
    bool isUpward = false;
};

// A click on a column's title: the same column the other way about, another one upwards.
void ClickColumn(SortState& sort, ResultColumn column);

// Brings places in context.results, as RowsOfPage gives them, into the order of the last click; as they are
// without one. The records of both sides have to be filled first.
void SortRows(const SearchContext& context, const SortState& sort, std::vector<size_t>& rows);

// Empties the record; the number of results stays, so that pages keep theirs. Nothing for a place beyond.
void RemoveRow(SearchContext& context, size_t place);

}  // namespace pixelgrove
