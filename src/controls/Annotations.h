// Annotations: `#define` and `uniform` lines whose comment has a fixed shape become control records.
//
// All matching is substring matching on one line; nothing here knows the shader language. A line that doesn't
// fit is ignored without a word; past kMaxControls records the rest is left out. Texts that are too long for
// a record's field are cut to what it holds. Positions are UTF-16 code units. Pure; one thread at a time for
// a ControlSet.
#pragma once

#include <QStringView>
#include <cstdint>
#include <span>
#include <vector>

#include "core/ControlSet.h"

namespace pixelgrove {

// What the record's fields hold, in code units.
inline constexpr qsizetype kMaxControlToken = 127;  // keyword, name, value of a define
inline constexpr qsizetype kMaxControlLabel = 259;  // display name, tree path, option
inline constexpr qsizetype kMaxControlName = 63;    // name of a numeric state

// Sets record 0 of the uniforms to the built-in control "Speed": -1 to 1, default 0.03.
void InitialiseSpeed(ControlSet& controls);

// Fills the define records from the text and sets defineCount. A record whose label is the one that its index
// had before keeps its range and values; a list keeps the selection of its index while it is long enough for
// it. A text that ends before the third word of an annotated line ends the scan.
void ScanDefines(ControlSet& controls, QStringView text);

// Fills the uniform records and sets uniformCount: "Speed", set anew, and what the text declares. commentMap
// has one class byte per code unit of the text (BuildCommentMap); with an empty one the result is "Speed"
// alone. A record whose name is the one that its index had before keeps its value, and nothing else.
void ScanUniforms(ControlSet& controls, QStringView text, std::span<const uint8_t> commentMap);

// The options between commas, one more than there are commas, each without its leading '@', ',', tab and
// blank. defaultIndex becomes the index of the last segment with an '@' in it, or stays.
std::vector<ControlOption> SplitOptionList(QStringView text, int32_t& defaultIndex);

// Frees the options of all records up to the counts; all else stays.
void FreeControlOptions(ControlSet& controls);

}  // namespace pixelgrove
