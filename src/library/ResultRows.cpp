#include "library/ResultRows.h"

#include <algorithm>

#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

uint32_t Count(const SearchContext& context) {
    return uint32_t(context.results.size());
}

std::optional<int> PageIn(QStringView text) {
    qsizetype position = 0;
    const std::optional<int> page = ScanInt(text, position);
    SkipSpace(text, position);
    return position == text.size() ? page : std::nullopt;
}

const QString& TextIn(const ShaderInfo& info, ResultColumn column) {
    switch (column) {
        case ResultColumn::Name:
            return info.name;
        case ResultColumn::User:
            return info.username;
        case ResultColumn::Description:
            return info.description;
        default:
            return info.id;
    }
}

int Compared(uint32_t first, uint32_t second) {
    return int(first > second) - int(first < second);
}

}  // namespace

uint32_t PageCount(const SearchContext& context) {
    return Count(context) / context.perPage + (Count(context) % context.perPage != 0);
}

uint32_t SteppedPage(const SearchContext& context, QStringView shown, int step) {
    const int64_t pages = PageCount(context);
    if (pages == 0) return context.page;
    return uint32_t(std::clamp(PageIn(shown).value_or(1) + int64_t(step), int64_t(1), pages));
}

uint32_t TypedPage(const SearchContext& context, QStringView typed) {
    const std::optional<int> page = PageIn(typed);
    if (!page) return context.page;
    return std::min(uint32_t(std::max(*page, 1)), Count(context) / context.perPage + 1);
}

std::vector<size_t> RowsOfPage(const SearchContext& context) {
    std::vector<size_t> rows;
    const size_t begin = size_t(context.page - 1) * context.perPage;
    const size_t end = std::min(begin + context.perPage, context.results.size());
    for (size_t place = begin; place < end; ++place)
        if (!context.results[place].id.isEmpty()) rows.push_back(place);
    return rows;
}

QString CellText(const ShaderInfo& info, ResultColumn column) {
    const QString none = QStringLiteral("<uncached>");
    if (info.name.isEmpty() && column != ResultColumn::Id) return none;
    // Signed, as the list shows them.
    if (column == ResultColumn::Likes) return QString::number(int32_t(info.likes));
    if (column == ResultColumn::Size) return QString::number(int32_t(info.size));
    const QString& text = TextIn(info, column);
    return text.isEmpty() ? none : text;
}

int CompareRecords(const ShaderInfo& first, const ShaderInfo& second, ResultColumn column) {
    if (column == ResultColumn::Likes) return Compared(second.likes, first.likes);
    if (column == ResultColumn::Size) return Compared(first.size, second.size);
    return TextIn(first, column).compare(TextIn(second, column));
}

void ClickColumn(SortState& sort, ResultColumn column) {
    sort.isUpward = sort.column != column || !sort.isUpward;
    sort.column = column;
}

void SortRows(const SearchContext& context, const SortState& sort, std::vector<size_t>& rows) {
    if (!sort.column) return;
    std::stable_sort(rows.begin(), rows.end(), [&](size_t first, size_t second) {
        const int order = CompareRecords(context.results[first], context.results[second], *sort.column);
        return sort.isUpward ? order < 0 : order > 0;
    });
}

void RemoveRow(SearchContext& context, size_t place) {
    if (place < context.results.size()) context.results[place] = ShaderInfo{};
}

}  // namespace pixelgrove
