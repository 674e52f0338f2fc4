// Where the comments of a GLSL text are. Pure; any thread.
#pragma once

#include <QStringView>
#include <cstdint>
#include <vector>

namespace pixelgrove {

// One class byte per code unit: 0 outside comments, 1 in a line comment (its line end included), 2 in a
// block comment (both delimiters included). String literals are not known.
std::vector<uint8_t> BuildCommentMap(QStringView text);

}  // namespace pixelgrove
