// The named key combinations that start and stop screen recorders of other makers.
//
// Plain records of the settings; main thread.
#pragma once

#include <QString>
#include <vector>

namespace pixelgrove {

struct RecorderSettings;

// Of a name, a start or a stop combination, in code units.
constexpr int kMaxKeyComboLength = 41;

// Combinations are key names joined by '+': "Alt+F9".
struct KeyCombo {
    QString name, start, stop;
};

struct RecorderTable {
    static constexpr size_t kCapacity = 32;
    std::vector<KeyCombo> rows;
    KeyCombo current;  // what is pressed; no row of the table

    RecorderTable();  // the built-in rows, the first of them in force
};

// A row of the same name, ignoring case, takes the combinations; another name becomes a new row. False, with
// no change, when the table is full or the name is empty.
bool MergeKeyCombo(RecorderTable& table, const KeyCombo& combo);

// The row of that name, ignoring case; null when there is none. Valid until a row is added or removed.
const KeyCombo* FindKeyCombo(const RecorderTable& table, const QString& name);

// A new row. False, with no change, when the table is full.
bool AddKeyCombo(RecorderTable& table, const KeyCombo& combo);

// Removes the row of that name. When it is by its exact name the chosen one, the first row that is left is
// chosen in its place and put in force; with no row left that is an empty one. False without such a row.
bool DeleteKeyCombo(RecorderTable& table, const QString& name, RecorderSettings& chosen);

// What the user chose; with the combinations in force where that lacks one.
KeyCombo ChosenKeyCombo(const RecorderTable& table, const RecorderSettings& chosen);

// Makes this the chosen one, as it is now, and puts it in force.
void ChooseKeyCombo(RecorderTable& table, RecorderSettings& chosen, const KeyCombo& combo);

// These are pressed from now on.
void PutInForce(RecorderTable& table, const QString& start, const QString& stop);

}  // namespace pixelgrove
