// Indentation as the editor's keys and "Indent Selection" make it. Lines are given without their line ends.
//
// Pure; any thread.
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <span>
#include <vector>

namespace pixelgrove {

// Columns from one tab stop to the next.
constexpr int kTabColumns = 4;

// The number of spaces and tabs that the line begins with.
qsizetype LeadingBlanks(QStringView line);

// What a line that is begun by Enter in this one starts with: its own leading blanks, one tab more where a
// block opens, one level (a tab, else four spaces) less where one closes. Only the first brace of each kind
// counts; "} else {" and "{ x; }" change nothing.
QString IndentOfNextLine(QStringView line);

// True when a "}" typed here takes the place of what stands before it in its line: blanks, and at least one.
bool IsOnlyBlanks(QStringView beforeCaret);

// Lines of this length or more keep their tabs when their indentation shrinks.
constexpr qsizetype kMaxExpandedLine = 4095;

// The line with all its tabs made spaces and up to four leading spaces taken away. A line that would pass
// kMaxExpandedLine that way keeps its tabs.
QString UnindentedLine(QStringView line);

// Nothing is to be done to a line of this depth.
constexpr int kLeaveLine = -1;
// More tabs than this no line gets.
constexpr int kMaxDepthTabs = 127;

// The depth in braces of each line of the text; line ends are CR, LF and CR LF. kLeaveLine for lines that end
// inside a block comment or begin with '#' (but for the first line). The last line, when nothing ends it, has
// the depth behind its last brace, also when that is below 0.
std::vector<int> LineDepths(QStringView text, std::span<const uint8_t> commentMap);

}  // namespace pixelgrove
