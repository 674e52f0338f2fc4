// Single source files: a file's text in place of the shown stage's, and back; the other stages and the
// channels stay. And the words that saving has for what went wrong or got lost. Main thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>

#include "core/Stages.h"

namespace pixelgrove {

// Larger files are refused unread.
constexpr qint64 kMaxSourceFileBytes = qint64(64) << 20;

// Puts the file's bytes, as text of the code page, into the shown stage, caret and view at the top, its error
// marks cleared, and the path on the list of recent files. Counts as a change. False when the file can't be
// read, and then nothing changed.
bool LoadSourceFile(const QString& path);

// What the message pane says of a file that could not be written; reason in the system's words, if any.
QString SavingFailed(const QString& reason);

// What the message pane says, behind other words, of characters that are not in the page of the file that
// they go to, or went to, and are '?' there; counts are by stage. Empty when all are 0.
QString LostCharacters(const std::array<qsizetype, kStageCount>& counts, const QString& page, bool isSaved);

// The text as US-ASCII; every other code unit becomes '?'. Pure.
QByteArray ToAscii(QStringView text);

}  // namespace pixelgrove
