#include "windows/WindowRecord.h"

#include <algorithm>

namespace pixelgrove {

WindowRecord* FindWindowRow(WindowRows& rows, QStringView name) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const WindowRecord& row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

WindowRecord* FindOrAddWindowRow(WindowRows& rows, QStringView name) {
    if (name.isEmpty() || name.size() > kMaxWindowName) return nullptr;
    if (WindowRecord* row = FindWindowRow(rows, name)) return row;
    if (rows.size() >= kMaxWindowRows) return nullptr;
    rows.push_back({});
    rows.back().name = name.toString();
    return &rows.back();
}

}  // namespace pixelgrove
