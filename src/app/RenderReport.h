// What pixelgrove-render says, and how it ends. Any thread of the program; each line goes out whole.
#pragma once

#include <QByteArray>
#include <QString>

namespace pixelgrove {

enum ExitCode { kExitDone = 0, kExitCompileFailed = 1, kExitUsage = 2 };

// To stderr as it is, with a line end.
void PrintError(const QString& text);

// The same behind the program's name. kExitUsage.
int Refuse(const QString& sentence);

// kExitDone, or kExitUsage with a message.
int PrintToStdout(const QByteArray& text);

}  // namespace pixelgrove
