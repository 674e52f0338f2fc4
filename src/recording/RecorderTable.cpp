#include "recording/RecorderTable.h"

#include "recording/RecorderSettings.h"

namespace pixelgrove {

RecorderTable::RecorderTable() {
    rows = {
        {QStringLiteral("XBOX Game Bar"), QStringLiteral("Windows+Alt+R"), QStringLiteral("Windows+Alt+R")},
        {QStringLiteral("OBS Studio"), QStringLiteral("Alt+["), QStringLiteral("Alt+]")},
        {QStringLiteral("NVidia Recorder"), QStringLiteral("Alt+F9"), QStringLiteral("Alt+F9")},
    };
    current = rows.front();
}

const KeyCombo* FindKeyCombo(const RecorderTable& table, const QString& name) {
    for (const KeyCombo& row : table.rows)
        if (row.name.compare(name, Qt::CaseInsensitive) == 0) return &row;
    return nullptr;
}

bool AddKeyCombo(RecorderTable& table, const KeyCombo& combo) {
    if (table.rows.size() >= RecorderTable::kCapacity) return false;
    table.rows.push_back(combo);
    return true;
}

bool MergeKeyCombo(RecorderTable& table, const KeyCombo& combo) {
    if (combo.name.isEmpty()) return false;
    const KeyCombo* found = FindKeyCombo(table, combo.name);
    if (!found) return AddKeyCombo(table, combo);
    KeyCombo& row = table.rows[size_t(found - table.rows.data())];
    row.start = combo.start;
    row.stop = combo.stop;
    return true;
}

bool DeleteKeyCombo(RecorderTable& table, const QString& name, RecorderSettings& chosen) {
    const KeyCombo* found = FindKeyCombo(table, name);
    if (!found) return false;
    const bool wasChosen = found->name == chosen.friendlyName;
    table.rows.erase(table.rows.begin() + (found - table.rows.data()));
    if (!wasChosen) return true;
    ChooseKeyCombo(table, chosen, table.rows.empty() ? KeyCombo() : table.rows.front());
    return true;
}

KeyCombo ChosenKeyCombo(const RecorderTable& table, const RecorderSettings& chosen) {
    if (chosen.start.isEmpty() || chosen.stop.isEmpty())
        return {chosen.friendlyName, table.current.start, table.current.stop};
    return {chosen.friendlyName, chosen.start, chosen.stop};
}

void ChooseKeyCombo(RecorderTable& table, RecorderSettings& chosen, const KeyCombo& combo) {
    chosen.friendlyName = combo.name;
    chosen.start = combo.start;
    chosen.stop = combo.stop;
    PutInForce(table, combo.start, combo.stop);
}

void PutInForce(RecorderTable& table, const QString& start, const QString& stop) {
    table.current = {QStringLiteral("Current"), start, stop};
}

}  // namespace pixelgrove
