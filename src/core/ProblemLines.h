// Compile messages in the form that compilers print and that editors' problem matchers know:
// "FILE:LINE:COLUMN: error: TEXT".
//
// Pure; any thread.
#pragma once

#include <QString>

#include "core/CompileMessage.h"

namespace pixelgrove {

// One such line, without LF. kind is "error", "warning" or "note"; lines and columns below 1 become 1.
QString ProblemLine(const QString& file, int line, int column, const QString& kind, const QString& text);

// The messages of a project that came from this file, each line ended by LF; empty ones are left out. What is
// about an include file names that one. All else names the project's file, with the line in the stage's text;
// which stage that is stands in front of the text, unless the file is GLSL and so has but one.
QString ProblemLinesOf(const CompileMessages& messages, const QString& file);

}  // namespace pixelgrove
