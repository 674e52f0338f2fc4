// Single source files: a file's text in place of the shown stage's, and back; the other stages and the
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

// What the message pane says of a file that could not be written; reason in the system's words, if any.
QString SavingFailed(const QString& reason);

// The text as US-ASCII; every other code unit becomes '?'. Pure.
QByteArray ToAscii(QStringView text);

}  // namespace pixelgrove
