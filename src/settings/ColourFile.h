// The colours of the user interface as the file Globals.XML has them. The program never writes that file.
//
// Main thread.
#pragma once

#include <QString>

#include "look/UiColours.h"

namespace pixelgrove {

// Reads the element UIColors; each row's element has the row's name with '_' for the blanks. A row that is
// missing takes the value that was read last before it; rows ahead of the first one that is there keep what
// they have. False, with no change, when the file can't be read or has no such element.
bool LoadUiColours(const QString& path, UiColours& colours);

}  // namespace pixelgrove
