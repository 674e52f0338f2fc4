#include "library/Playlist.h"

#include <algorithm>
#include <utility>

#include "library/CacheNames.h"
#include "library/FolderWalk.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

namespace pixelgrove {
namespace {

constexpr qint64 kMaxPlaylistBytes = qint64(8) << 20;
constexpr qsizetype kMaxPathUnits = 259;

bool IsLineEnd(char byte) {
    return byte == '\r' || byte == '\n';
}

// What stands between one run of line ends and the next.
template <typename Visitor>
void ForEachPlaylistLine(QByteArrayView bytes, Visitor visit) {
    const char* at = bytes.begin();
    for (;;) {
        at = std::find_if_not(at, bytes.end(), IsLineEnd);
        if (at == bytes.end()) return;
        const char* end = std::find_if(at, bytes.end(), IsLineEnd);
        visit(QByteArrayView(at, end));
        at = end;
    }
}

}  // namespace

std::optional<QStringList> ParsePlaylist(QByteArrayView bytes) {
    QStringList ids;
    bool isGood = true;
    ForEachPlaylistLine(bytes, [&](QByteArrayView line) {
        const qsizetype zero = line.indexOf('\0');
        if (zero >= 0) line.truncate(zero);
        isGood = isGood && !line.isEmpty() && line.size() <= kMaxShaderIdUnits;
        if (isGood) ids += FromCodePage(line);
    });
    if (!isGood) return std::nullopt;
    return ids;
}

bool LoadPlaylist(const QString& path, SearchContext& context) {
    const std::optional<QByteArray> bytes = ReadWholeFile(path, kMaxPlaylistBytes);
    if (!bytes) return false;
    const std::optional<QStringList> ids = ParsePlaylist(*bytes);
    if (ids && ids->isEmpty()) return false;
    context.results.clear();
    if (!ids) return false;
    context.results.resize(size_t(ids->size()));
    for (qsizetype i = 0; i < ids->size(); ++i)
        context.results[size_t(i)].id = (*ids)[i];
    context.fromPlaylist = true;
    context.local = true;
    context.page = 1;
    context.perPage = uint32_t(ids->size());
    return true;
}

bool SavePlaylist(const QString& path, const SearchContext& context) {
    QByteArray bytes;
    for (const ShaderInfo& record : context.results)
        if (!record.id.isEmpty()) bytes += ToCodePage(record.id) + '\n';
    return !bytes.isEmpty() && WriteWholeFile(path, bytes);
}

bool AppendToPlaylist(const QString& path, const QStringList& ids) {
    const qsizetype slash = NormalizePath(path).lastIndexOf(u'/');
    if (slash > 0 && !MakeFolder(path.left(slash))) return false;
    ReadFailure failure;
    const std::optional<QByteArray> old = ReadWholeFile(path, kMaxPlaylistBytes, &failure);
    if (!old && !failure.isMissing) return false;
    QByteArray bytes = old.value_or(QByteArray());
    // Else the first id would become a part of the last one.
    if (!bytes.isEmpty() && !IsLineEnd(bytes.back())) bytes += "\r\n";
    for (const QString& id : ids)
        if (!id.isEmpty()) bytes += ToCodePage(id) + "\r\n";
    return WriteWholeFile(path, bytes);
}

std::vector<PlaylistFile> ListPlaylists(const QString& folder) {
    std::vector<PlaylistFile> files;
    ForEachFileSorted(folder, u"N", [&files](const WalkedFile& file) {
        PlaylistFile entry{file.Name(), file.Path()};
        if (entry.name.contains(QLatin1String(".playlist"), Qt::CaseInsensitive) &&
            entry.path.size() <= kMaxPathUnits)
            files.push_back(std::move(entry));
        return files.size() < kMaxListedPlaylists;
    });
    return files;
}

}  // namespace pixelgrove
