// The message pane read back: which lines of the shown stage hold errors, and where a message points to.
//
// Pure; any thread.
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace pixelgrove {

// The line numbers in all lines of the pane that hold the stage's name (any letter case, anywhere in the
// line's first 62 characters), in the pane's order, repetitions kept. A number is what stands between the
// first ")" and the last "(" before it; it comes from a message and may be any int.
std::vector<int> ErrorLinesOf(const QString& paneText, const QString& stageName);

struct MessageTarget {
    QString name;          // stage name as StageName gives it, else a path
    int line = 0;          // from the message; may be any int
    bool isStage = false;  // Common, Buffer A to D, Cube A or Image
};

// Where the line "NAME(LINE)..." points to, going by its first 255 characters. Nothing when there is no
// name, when the text between "(" and ")" is not 1 to 31 characters long, or when it is no number.
std::optional<MessageTarget> ParseMessageLine(const QString& line);

}  // namespace pixelgrove
