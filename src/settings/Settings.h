// The settings files: read once at start before any window is made, written once when the main window has
// closed.
//
// What they hold goes to AppState and to StoredSettings(). Main thread, between AllocateGlobals and
// FreeGlobals; the audio thread may run.
#pragma once

#include <QString>

#include "settings/SettingsRecords.h"

namespace pixelgrove {

// PixelgroveGlobals.XML in the data folder; empty when there is no usable data folder.
QString SettingsPath();

// Every setting as it is without a file, but for the window layout, which the windows registered, and the
// recent lists.
void SetDefaultSettings();

// Sets the defaults, then takes what the settings file holds and after it the colours. A number out of its
// setting's range is clamped or left out as the setting has it, a text that is too long or a number that its
// field can't hold leaves the default. Without a readable settings file the colours aren't read either. False
// when either file can't be read. StoredSettings().file then has what the user should know of it.
bool LoadSettings(const QString& settingsPath, const QString& coloursPath);

// Writes the settings file; it is replaced whole or not at all. The combination in force is brought in line
// with the one that the user chose, or the other way round where none is chosen.
//
// The file is read anew first, under a lock among the instances of the program: what another one added to the
// recent lists stays, and a damaged file is kept as BadSettingsPath. A file that could not be read, at the
// start or now, is left alone.
//
// False when nothing was written; reason then says why.
bool SaveSettings(const QString& settingsPath, QString* reason = nullptr);

}  // namespace pixelgrove
