#include "recording/RecorderTable.h"

namespace pixelgrove {

RecorderTable::RecorderTable() {
    rows = {
        {QStringLiteral("XBOX Game Bar"), QStringLiteral("Windows+Alt+R"), QStringLiteral("Windows+Alt+R")},
        {QStringLiteral("OBS Studio"), QStringLiteral("Alt+["), QStringLiteral("Alt+]")},
        {QStringLiteral("NVidia Recorder"), QStringLiteral("Alt+F9"), QStringLiteral("Alt+F9")},
    };
    current = rows.front();
}

bool MergeKeyCombo(RecorderTable& table, const KeyCombo& combo) {
    if (combo.name.isEmpty()) return false;
    for (KeyCombo& row : table.rows) {
        if (row.name.compare(combo.name, Qt::CaseInsensitive) != 0) continue;
        row.start = combo.start;
        row.stop = combo.stop;
        return true;
    }
    if (table.rows.size() >= RecorderTable::kCapacity) return false;
    table.rows.push_back(combo);
    return true;
}

}  // namespace pixelgrove
