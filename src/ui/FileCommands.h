// Single source files: a file's text in place of the shown stage's, and back. The other stages and the
// channels stay. Main thread.
#pragma once

#include <QByteArray>
#include <QString>

namespace pixelgrove {

// Larger files are refused unread.
constexpr qint64 kMaxSourceFileBytes = qint64(64) << 20;

// Puts the file's bytes, as text of the code page, into the shown stage, caret and view at the top, its error
// marks cleared, and the path on the list of recent files. Counts as a change. False when the file can't be
// read, and then nothing changed.
bool LoadSourceFile(const QString& path);

// The text as US-ASCII; every other code unit becomes '?'. Pure.
QByteArray ToAscii(QStringView text);

}  // namespace pixelgrove
