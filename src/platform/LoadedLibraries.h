// Which libraries the process has loaded, for the user to report. Any thread.
#pragma once

#include <QStringList>

namespace pixelgrove {

// Paths of the shared libraries, in the order in which they were loaded; the program itself is none. Empty
// when the system doesn't tell.
QStringList LoadedLibraries();

}  // namespace pixelgrove
