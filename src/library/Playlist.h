// Playlists: text files of shader ids, one a line, in the code page. A run of CR and LF is one line end, and
// the last line may lack it.
//
// Ids are taken as they stand: which of them name a shader is seen when it is fetched. Any thread, one
// context by one thread at a time.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "library/ShaderSearch.h"

namespace pixelgrove {

// Makes the file's ids the results, all of them on one page. False when the file can't be read, has no lines
// or is larger than 8 MiB, and the context is as it was; or when a line is no id, and the results are empty.
bool LoadPlaylist(const QString& path, SearchContext& context);

// Writes the ids of the results, removed records left out, over the file. False when there are none, or the
// file can't be written and is as it was.
bool SavePlaylist(const QString& path, const SearchContext& context);

// Adds the ids to the end of the file. The file is made where it is missing, and the folder that it is to lie
// in. False when the file can't be written and is as it was.
bool AppendToPlaylist(const QString& path, const QStringList& ids);

struct PlaylistFile {
    QString name;  // with its extension
    QString path;
};

constexpr size_t kMaxListedPlaylists = 100;

// The files of a folder whose names hold ".playlist", in either case and at any place, by name; the first
// kMaxListedPlaylists. Paths beyond 259 units are left out.
std::vector<PlaylistFile> ListPlaylists(const QString& folder);

// The lines of a playlist's bytes; nothing when one of them is no id, which has 1 to 20 units (a line ends at
// its first zero byte).
std::optional<QStringList> ParsePlaylist(QByteArrayView bytes);

}  // namespace pixelgrove
