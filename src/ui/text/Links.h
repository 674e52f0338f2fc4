// Addresses in a line of text. Pure; any thread.
#pragma once

#include <QStringView>
#include <optional>

namespace pixelgrove {

struct LinkSpan {
    qsizetype start;
    qsizetype length;
};

// The http or https address that the column (from 0) is in; nothing where there is none. Punctuation at its
// end is not part of it, nor a closing bracket that it doesn't open. At most 2048 code units to either side
// are looked at.
std::optional<LinkSpan> FindLinkAt(QStringView line, qsizetype column);

}  // namespace pixelgrove
