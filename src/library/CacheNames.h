// What files of the cache are called: names of the service, turned into file names that differ wherever the
// names do and that never lead out of their folder.
//
// Ids come from the network and from playlists and are not trusted. Pure; any thread.
#pragma once

#include <QString>
#include <optional>

namespace pixelgrove {

constexpr qsizetype kMaxShaderIdUnits = 20;

// For a shader's id: the id in lower case, '_', and in hexadecimal a mask with bit i for a capital at place
// i, so that ids that differ in case alone have different files on every file system. Letters are those of
// ASCII. Nothing for an id that is empty or longer than kMaxShaderIdUnits, or is no safe file name
// (IsSafeFileName).
std::optional<QString> EncodeCacheName(QStringView id);

// The id of such a name, which is split at its first '_'. Nothing without one, and where what stands on its
// sides is no id and no mask.
std::optional<QString> DecodeCacheName(QStringView name);

// For a search: base32 of RFC 4648, padded, of the low byte of each unit.
QString Base32Encode(QStringView text);

// The text of such a name, one unit for each byte. Reading ends at the first '='. Nothing when the name's
// length is no multiple of 8 or it holds another character before the '='.
std::optional<QString> Base32Decode(QStringView name);

// True for what a user may type for a shader: 1 to kMaxShaderIdUnits letters and digits of ASCII.
bool IsShaderId(QStringView text);

}  // namespace pixelgrove
