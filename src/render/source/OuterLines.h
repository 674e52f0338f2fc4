// What to tell of messages that name no line of the user's: those in the texts that stand before and behind a
// stage, and those that by the way lines are counted come out at the end of the text before.
//
// Pure text work; any thread.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <vector>

#include "core/IncludeContext.h"

namespace pixelgrove {

// Adds one line to a mapped log behind each run of such messages that have the same cause, as
// "NAME(LINE): note: ...", where NAME and LINE are the user's and LINE counts as the editor does. Each note
// comes once.
//
// log is what was mapped, line for line; text and rows are those of the assembly that gave it.
QString ExplainOuterLines(const QString& mapped, const QString& log, QByteArrayView text,
                          const std::vector<IncludedFile>& rows);

}  // namespace pixelgrove
