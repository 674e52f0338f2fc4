// Single source files: what their bytes are, and the words that saving has for what went wrong or got lost.
// Main thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>

#include "core/Stages.h"

namespace pixelgrove {

// Larger files are refused unread.
constexpr qint64 kMaxSourceFileBytes = qint64(64) << 20;

// What the message pane says of a file that could not be written; reason in the system's words, if any.
QString SavingFailed(const QString& reason);

// What the message pane says, behind other words, of characters that are not in the page of the file that
// they go to, or went to, and are '?' there; counts are by stage. Empty when all are 0.
QString LostCharacters(const std::array<qsizetype, kStageCount>& counts, const QString& page, bool isSaved);

// The text as US-ASCII; every other code unit becomes '?'. Pure.
QByteArray ToAscii(QStringView text);

}  // namespace pixelgrove
