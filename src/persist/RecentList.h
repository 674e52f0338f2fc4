// The lists of files opened last: pushing an entry, and their elements in the settings file.
//
// Entry 0 is the newest. Every function takes a null list, which stays without effect. Main thread.
#pragma once

#include <QString>
#include <QStringList>

#include "core/StringList.h"
#include "persist/XmlStore.h"

namespace pixelgrove {

// Puts the path on top. An entry that differs at most by case is taken out first, so the new spelling stays;
// of a full list the oldest entry goes. False, with no change, when no such file or folder exists.
bool PushRecent(StringList* list, QString path);

// Reads File_00, File_01, ... of the element, oldest first, up to the first that is missing, 100 at most,
// into the emptied list. What has gone from disk is left out. A missing element leaves the list as it was.
void LoadRecent(StringList* list, XmlStore& store, const QString& elementName);

// What is to be stored when another instance of the program may have stored its list since base was read:
// first what was opened here since then, then what was opened there, then the rest, ten in all. Every list
// has its newest entry first.
QStringList MergeRecent(const QStringList& own, const QStringList& stored, const QStringList& base);

// Writes the element, empty for an empty or null list. False when the writer refused.
bool WriteRecent(const StringList* list, XmlStore& store, const QString& elementName);

}  // namespace pixelgrove
