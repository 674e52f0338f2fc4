// PickFiles: the general file picker and the one for pictures, with their filters and default extensions.
//
// Main thread. The dialog itself is UserDialogs::askForFile.
#pragma once

#include <QString>

#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

// filter: texts and their patterns (split by ';') by turns, each followed by a tab, with one more tab or none
// at the end. A pattern alone makes one entry of it; without any the extension of path does, and failing that
// all files are shown. For saving, path is the suggestion. An empty startFolder leaves the choice to the
// dialog. The chosen path; empty when cancelled.
QString PickFile(const UserDialogs& dialogs, const QString& path, const QString& startFolder,
                 const QString& filter, bool forSave);

// A picture to open. The extension of path decides the filter shown first, else it is the one of all kinds of
// pictures. Empty startFolder: the user's pictures. The chosen path; empty when cancelled.
QString PickImageFile(const UserDialogs& dialogs, const QString& path, const QString& startFolder);

// The folder of the picture that PickImageFile gave last; empty before the first.
QString LastImageFolder();

}  // namespace pixelgrove
