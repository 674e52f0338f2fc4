// What the editor's line commands do to a text: comment, duplicate and move the lines of a selection.
//
// Pure; any thread. Positions are UTF-16 code units of the text, whose lines end with LF. A line of which a
// selection has only the start is none of its lines.
#pragma once

#include <QStringView>
#include <vector>

#include "ui/text/UndoHistory.h"

namespace pixelgrove {

struct TextSelection {
    qsizetype anchor;
    qsizetype caret;

    bool operator==(const TextSelection&) const = default;
};

struct LineEdit {
    // Ascending, in positions of the text before all of them; none when there is nothing to do.
    std::vector<UndoHistory::Change> changes;
    TextSelection selection;  // behind them
};

// Puts "// " before each line, where the blanks that they share end, or takes "//" and a space behind it away
// when all of them are comments. Blank lines among others stay as they are.
LineEdit ToggleComments(QStringView text, TextSelection selection);

// The selection once more behind itself, where the copy is selected then; without one the caret's line once
// more below it, where the caret goes.
LineEdit Duplicate(QStringView text, TextSelection selection);

// Past the line above or below them, selection and all; nothing at the text's ends.
LineEdit MoveLines(QStringView text, TextSelection selection, bool up);

}  // namespace pixelgrove
