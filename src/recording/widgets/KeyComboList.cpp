#include "recording/widgets/KeyComboList.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStringList>
#include <algorithm>

#include "platform/TextScan.h"
#include "recording/keyboard/KeyboardKeys.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

void KeyComboEdits::Show(const KeyCombo& combo) const {
    name.setText(combo.name);
    start.setText(combo.start);
    stop.setText(combo.stop);
}

KeyCombo KeyComboEdits::Shown() const {
    return {name.text(), start.text(), stop.text()};
}

const KeyCombo* FillKeyComboList(QComboBox& list, const RecorderTable& table, const QString& chosen) {
    QStringList names;
    for (const KeyCombo& row : table.rows)
        names.append(row.name);
    names.sort(Qt::CaseInsensitive);
    const QSignalBlocker silent(list);
    list.clear();
    list.addItems(names);
    const auto row = std::ranges::find(table.rows, chosen, &KeyCombo::name);
    const bool isFound = row != table.rows.end();
    list.setCurrentIndex(isFound ? int(names.indexOf(chosen)) : -1);
    return isFound ? &*row : nullptr;
}

const KeyCombo* TakeSelectedKeyCombo(const QComboBox& list, RecorderTable& table) {
    const QString name = list.currentText();
    const KeyCombo* row = name.isEmpty() ? nullptr : FindKeyCombo(table, name);
    if (row) PutInForce(table, row->start, row->stop);
    return row;
}

QString NoteOnKeyCombos(const QString& start, const QString& stop) {
    QStringList notes, unknown;
    for (const QString& combo : {start, stop})
        if (!combo.isEmpty() && !ParseKeyCombo(combo, KeyNames())) unknown.append(InQuotes(combo));
    unknown.removeDuplicates();
    if (!unknown.isEmpty())
        notes.append(
            QStringLiteral("This keyboard lacks a key of %1.").arg(unknown.join(QStringLiteral(" and of "))));
    if (IsXwayland()) notes.append(QStringLiteral("Under Wayland, only programs that use X11 see the keys."));
    return notes.join(u'\n');
}

}  // namespace pixelgrove
