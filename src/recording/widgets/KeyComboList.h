// What both recording dialogs show of the table of key combinations. Main thread.
#pragma once

#include <QString>

#include "recording/RecorderTable.h"

class QComboBox;
class QLineEdit;

namespace pixelgrove {

// The edits that show one combination; the form's.
struct KeyComboEdits {
    QLineEdit &name, &start, &stop;

    void Show(const KeyCombo& combo) const;
    KeyCombo Shown() const;
};

// The list shows the names of all rows, sorted, and has that of the chosen one selected, none without such a
// row. Returns the row, or null; valid until one is added or removed. The list tells nobody of the change.
const KeyCombo* FillKeyComboList(QComboBox& list, const RecorderTable& table, const QString& chosen);

// The row whose name was just selected, which is put in force at once; null when there is none. Valid as
// above.
const KeyCombo* TakeSelectedKeyCombo(const QComboBox& list, RecorderTable& table);

// What the user should know before these are pressed: combinations with a name that no key of this keyboard
// has, and that programs under Wayland don't see the keys. Empty for nothing.
QString NoteOnKeyCombos(const QString& start, const QString& stop);

}  // namespace pixelgrove
