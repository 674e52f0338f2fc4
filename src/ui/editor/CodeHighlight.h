// Colours on an editor's text, as formats of the lines' layouts: they are no part of the document, so neither
// undo nor the modified state knows of them, and they move with the lines that they are on. Main thread.
#pragma once

#include <vector>

#include "ui/text/Colouring.h"

class QTextCharFormat;
class QTextDocument;

namespace pixelgrove {

// The colour, 0x00BBGGRR, as a format.
const QTextCharFormat& ColourFormat(uint32_t colour);

// Gives [start, end) of the document the colours of the spans, black where there is none; also what the last
// span covers beyond end. Other text keeps the colours that it has. Lines whose colours change are laid out
// anew and painted.
void ApplyColours(QTextDocument& document, qsizetype start, qsizetype end,
                  const std::vector<ColourSpan>& spans);

// Moves the colours of one line with its text when an edit inside it put added code units in the place of
// removed ones, so that laying the line out once is enough in most cases. From contentsChange, before the
// layout hears of the edit.
void MoveColours(QTextDocument& document, int position, int removed, int added);

}  // namespace pixelgrove
