// A cheap look at bytes that should hold JSON, before they are decoded and parsed.
//
// Pure; any thread.
#pragma once

#include <QByteArray>
#include <optional>

namespace pixelgrove {

// The part of text that is fit to be parsed: up to the last '}' or ']' at which all brackets were closed,
// so that stray bytes behind the JSON are cut off. Text ends at its first zero byte.
// Nothing when text is blank, does not begin (blanks aside) with '{' or '[', is an error answer (begins,
// at its very first byte, with {"Error":), or its brackets or quotes don't match.
// The result looks into the bytes given and lives as long as they do.
std::optional<QByteArrayView> CheckJsonText(QByteArrayView text);

}  // namespace pixelgrove
