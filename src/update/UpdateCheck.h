// Whether there is a newer build: what a server says of its latest release, against this build's own stamp.
//
// Any thread. Nothing is fetched unless the user names a server: the program ships with no address.
#pragma once

#include <QString>

#include "net/WebClient.h"

namespace pixelgrove {

// The folder that the user set in PIXELGROVE_UPDATE_URL, without a '/' at its end; empty when there is none.
// The file kUpdateFile in it is what is fetched, and the folder itself is where a release is downloaded from.
QString UpdateAddress();
inline const QString kUpdateFile = QStringLiteral("mlupdate.txt");

// What an update check has to say is at most that long, in code units; the rest is cut off.
constexpr qsizetype kMaxUpdateText = 16'384 / 2 - 1;

// Fetches the server's text and says how this build stands to it, for the user to read. The text has a mark
// of one code unit in front, then the release's stamp up to the first CR, then whatever the release has to
// tell; it is UTF-16 or UTF-8 by its byte order mark, UTF-8 without one. Never empty: a failure is told too.
QString CheckForUpdate(const QString& address, const QString& ownStamp, const FetchFunction& fetch);

}  // namespace pixelgrove
