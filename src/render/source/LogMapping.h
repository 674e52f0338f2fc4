// Log mapping: a GL compiler's log, which counts lines of the assembled text, told in terms of the user's
// files and lines.
//
// Pure text work; MapShaderLog takes the included-file table of the context, so it runs where the
// assembly ran (in the workbench the render thread). The others may run on any thread.
#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>
#include <optional>
#include <vector>

#include "core/CompileMessage.h"
#include "core/IncludeContext.h"

namespace pixelgrove {

// Rewrites every line of the log that names a place, as "NAME(LINE): message". Two shapes are known:
//   0(57) : error C0000: text
//   0:57(12): error: text           also "warning: text" and "preprocessor error: text"
// Lines of any other shape pass through. Every line of the result ends in LF. The log ends at its first
// zero character, if it has one. defaultName is used for lines that lie in no file's span.
//
// A line belongs to the deepest file whose span holds it, both ends included, the first of equals. So the
// line right behind a file counts as that file's. The spans of files of depth 0 and 1 that end above the
// line are subtracted from its number; deeper ones lie within those.
//
// A null string when the log has no lines. context.includedFiles is always empty afterwards.
QString MapShaderLog(IncludeContext& context, const QString& log, const QString& defaultName);

// The row that a message about this line of the assembled text is counted to, by that rule; null for none.
const IncludedFile* FileAt(const std::vector<IncludedFile>& rows, int line);

// The line of the assembled text that a line of the log names; nothing for lines of no known shape.
std::optional<int> LogLineOf(QStringView logLine);

// The columns that the log of an assembled text names, by the lines that MapShaderLog made of it; those of
// equal lines in their order. The one driver that names any counts a run of blanks as one character, and a
// macro's text in place of its name; of these the blanks are put right.
using LogColumns = QHash<QString, QList<int>>;
LogColumns ColumnsOf(const QString& log, const QString& mapped, QByteArrayView text);

// Gives each message its column, and takes that out of the columns. Lines with none stay as they are.
void PlaceColumns(LogColumns& columns, CompileMessages& messages);

// Adds, behind the first line of a mapped log that calls the sampler iChannel0..3 undeclared, one line at
// the same place that tells what to do: the channel has no input. At most one such line for each channel.
// stageName is the stage that was compiled, which is the one whose channel is missing, also when the place
// is in Common or in a file. Meant to run before SplitErrors, so that the line goes where the
// driver's goes.
QString ExplainUnsetChannels(const QString& mapped, const QString& stageName);

// Each line of a mapped text with its place; what names none in that form has none.
CompileMessages MessagesOf(QStringView mapped);

struct StageErrors {
    CompileMessages common;  // the lines that hold "Common" anywhere, in any letter case
    CompileMessages stage;   // all others, empty ones among them
};

// Deals a mapped log out to the stage that was compiled and to Common. A note goes with the message before
// it.
StageErrors SplitErrors(const QString& mapped);

}  // namespace pixelgrove
