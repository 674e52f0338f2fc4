// Starting other programs of the user's. Main thread.
#pragma once

#include <QString>
#include <QStringList>

namespace pixelgrove {

// Starts it as a process of its own, which outlives this one and has the environment that the user gave to
// this one, and returns at once. False when it can't be started.
bool StartProgram(const QString& program, const QStringList& arguments);

// Opens an address by the desktop's opener, else in the first web browser found. False without any, and for
// what doesn't begin with http:// or https://: an opener would run whatever else it is.
bool OpenAddress(const QString& address);

}  // namespace pixelgrove
