// The colouring pass: which stretches of a stage's text stand in which colour.
//
// Pure; any thread. Positions are UTF-16 code units of the text, ends stand behind the last one.
#pragma once

#include <QStringView>
#include <cstdint>
#include <span>
#include <vector>

namespace pixelgrove {

struct ColourSpan {
    qsizetype start;
    qsizetype end;
    uint32_t colour;  // 0x00BBGGRR

    bool operator==(const ColourSpan&) const = default;
};

struct Colouring {
    std::vector<ColourSpan> spans;  // ascending, not overlapping, none empty
    // From the first to behind the last word that could be a control ("uniform" or "#define"); -1 without
    // one.
    qsizetype changedStart = -1;
    qsizetype changedEnd = -1;

    bool HasControlWords() const { return changedStart >= 0; }
};

// Looks at [start, end) of the text; an end below 0 or beyond the text is the text's. commentMap has one
// class byte per code unit, as BuildCommentMap makes it. What no span covers between start and end is black.
// The last span ends where its word or comment does, which may be beyond end.
Colouring ColourText(QStringView text, std::span<const uint8_t> commentMap, qsizetype start, qsizetype end);

}  // namespace pixelgrove
