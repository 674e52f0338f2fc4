// Where a text defines a name: what its functions and macros are called with.
//
// Pure; any thread. Positions are UTF-16 code units of the text. A comment map has one class byte per code
// unit, as BuildCommentMap makes it.
#pragma once

#include <QStringList>
#include <QStringView>
#include <cstdint>
#include <span>

namespace pixelgrove {

struct WordPlace {
    qsizetype start;
    qsizetype length;
};

// The word around the position, which may stand at either end of it. Empty where there is none, where it is a
// member behind a point, and for more letters than a word of the language has.
WordPlace WordAround(QStringView text, qsizetype position);

// The heads of the functions and the lines of the macros of that name, without comments, in their order: a
// few at most, none of them long. Of a huge text only what is near the position counts.
QStringList DefinitionsOf(QStringView name, QStringView text, std::span<const uint8_t> commentMap,
                          qsizetype position);

}  // namespace pixelgrove
