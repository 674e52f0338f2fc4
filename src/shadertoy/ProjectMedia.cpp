#include "shadertoy/ProjectMedia.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <algorithm>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "core/BaseFolders.h"
#include "media/CubeFaces.h"
#include "media/ImageFiles.h"
#include "media/VolumeFile.h"
#include "platform/Files.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

struct Medium {
    std::array<BitmapRef, 6> faces;
    VolumeRef volume;
    QString problem;

    qint64 Bytes() const {
        size_t bytes = volume ? volume->size() : 0;
        for (const BitmapRef& face : faces)
            bytes += face ? face->bits.size() : 0;
        return qint64(bytes);
    }
};

// Loads each file once, however many channels name it and however they spell it. Failures are remembered too.
class MediaLoader {
  public:
    explicit MediaLoader(qint64 maxBytes) : roomBytes_(maxBytes) {}

    const Medium& Load(uint32_t kind, const QString& path) {
        const auto [place, isNew] = media_.try_emplace({kind, KeyOf(kind, path)});
        Medium& medium = place->second;
        if (!isNew) return medium;
        if (kind == kChannelVolume) {
            medium.volume = LoadVolumeFile(path, &medium.problem, roomBytes_);
        } else if (kind == kChannelCubemap) {
            LoadCubemapFaces(path, medium.faces, &medium.problem, roomBytes_);
        } else {
            medium.faces[0] = LoadImageFile(path, &medium.problem, roomBytes_);
        }
        roomBytes_ -= medium.Bytes();
        return medium;
    }

  private:
    // The faces of a cube stand beside the name that it was called by, not beside what a link leads to.
    static QString KeyOf(uint32_t kind, const QString& path) {
        const QFileInfo file(path);
        if (kind != kChannelCubemap || !IsPlainFile(CubeFacePath(path, 1))) return file.canonicalFilePath();
        return QFileInfo(file.absolutePath()).canonicalFilePath() + u'/' + file.fileName();
    }

    std::map<std::pair<uint32_t, QString>, Medium> media_;
    qint64 roomBytes_;
};

bool IsMediumKind(uint32_t kind) {
    return kind == kChannelTexture || kind == kChannelCubemap || kind == kChannelVolume;
}

// Finds the local files of names, and fetches those that aren't there, each once.
class MediaFinder {
  public:
    MediaFinder(const QString& projectFolder, const FetchMedium& fetch)
        : projectFolder_(projectFolder), fetch_(fetch) {}

    // As ResolveMedium.
    QString Find(const QString& name, QString& reason) {
        const QString path = ResolveMedium(name, projectFolder_, &reason);
        if (!path.isEmpty() || name.isEmpty() || !fetch_) return path;
        const auto [place, isNew] = problems_.try_emplace(name);
        if (isNew) place->second = fetch_(name);
        const QString fetched = ResolveMedium(name, projectFolder_);
        if (!fetched.isEmpty()) {
            reason.clear();
        } else if (!place->second.isEmpty()) {
            reason += QStringLiteral(", and ") + place->second;
        }
        return fetched;
    }

  private:
    const QString& projectFolder_;
    const FetchMedium& fetch_;
    std::map<QString, QString> problems_;  // by name
};

void PrepareChannel(ShaderStage& stage, size_t index, MediaFinder& finder, MediaLoader& loader) {
    ChannelInput& channel = stage.channels[index];
    channel.mediaProblem.clear();
    const QString path = finder.Find(channel.fileName, channel.mediaProblem);
    if (path.isEmpty()) return;
    // A path that doesn't fit is looked up again by its name at the next load.
    if (path.size() < kFileNameCapacity) channel.fileName = path;

    const Medium& medium = loader.Load(channel.kind, path);
    channel.faces = medium.faces;
    channel.volumeData = medium.volume;
    channel.mediaProblem = medium.problem;
    std::array<float, 3>& resolution = stage.channelResolution[index];
    if (channel.kind == kChannelVolume) {
        if (!channel.volumeData) return;
        const std::optional<VolumeHeader> header = ReadVolumeHeader(*channel.volumeData);
        if (header) resolution = {float(header->x), float(header->y), float(header->z)};
    }
    channel.sourceStage = -1;
    const BitmapRef& first = channel.faces[0];
    if (first) resolution = {float(first->width), float(first->height), 1.0f};
}

// What follows the last '/' of a name, where that can't lead out of a folder; else empty.
QString BaseNameOf(const QString& name) {
    const QString base = name.mid(name.lastIndexOf(u'/') + 1);
    return IsSafeFileName(base) ? base : QString();
}

QString CacheFolder() {
    const QString root = NormalizePath(CacheRoot());
    return root.isEmpty() ? QString() : root + u'/' + kCacheAssets;
}

// Folder and name in it, each pair once, in the order of search. An empty folder is for a whole path.
using Places = QList<std::pair<QString, QString>>;

Places PlacesOf(const QString& name, const QString& projectFolder) {
    const QString asItStands = NormalizePath(name);
    const QString base = BaseNameOf(name);
    QStringList folders;
    if (!projectFolder.isEmpty()) {
        const QString folder = NormalizePath(projectFolder);
        folders = {folder, folder + QStringLiteral("/media")};
    }
    Places places;
    const auto add = [&places](const QString& folder, const QString& file) {
        if (!file.isEmpty() && !places.contains({folder, file})) places.append({folder, file});
    };
    if (QDir::isRelativePath(asItStands)) {
        for (const QString& folder : folders)
            add(folder, asItStands);
        add(QDir::currentPath(), asItStands);
    } else {
        add({}, asItStands);
    }
    for (const QString& folder : folders)
        add(folder, base);
    if (const QString cache = CacheFolder(); !cache.isEmpty()) add(cache, base);
    return places;
}

QString JoinedPath(const std::pair<QString, QString>& place) {
    return place.first.isEmpty() ? place.second : place.first + u'/' + place.second;
}

// A clause for the user.
QString NotFoundIn(const Places& places, const QString& name) {
    QStringList folders;
    for (const auto& [folder, file] : places)
        if (!folder.isEmpty() && !folders.contains(InQuotes(folder))) folders += InQuotes(folder);
    QString text = QStringLiteral("no file %1 was found").arg(InQuotes(name));
    if (folders.isEmpty()) return text;
    if (places.first().first.isEmpty())
        text += QStringLiteral(", nor %1").arg(InQuotes(places.last().second));
    return text + QStringLiteral(" in ") + folders.join(QStringLiteral(", "));
}

}  // namespace

QString MediumCachePath(const QString& name) {
    const QString base = BaseNameOf(name);
    const QString folder = CacheFolder();
    return base.isEmpty() || folder.isEmpty() ? QString() : folder + u'/' + base;
}

QString ResolveMedium(const QString& name, const QString& projectFolder, QString* reason) {
    const Places places = PlacesOf(name, projectFolder);
    const auto found = std::ranges::find_if(places, IsPlainFile, JoinedPath);
    if (found != places.end()) return JoinedPath(*found);
    if (reason) *reason = name.isEmpty() ? QStringLiteral("it names no file") : NotFoundIn(places, name);
    return {};
}

VolumeRef LoadVolumeFile(const QString& path, QString* reason, qint64 maxBytes) {
    QString unused;
    QString& why = reason ? *reason : unused;
    const QString name = InQuotes(path);
    const QString unreadable = QStringLiteral("%1 can't be read").arg(name);
    QFile file(NormalizePath(path));
    if (!IsPlainFile(path) || !file.open(QIODevice::ReadOnly)) {
        why = unreadable;
        return nullptr;
    }
    const qint64 fileBytes = file.size();
    if (fileBytes > kMaxVolumeFileBytes) {
        why = QStringLiteral("%1 is too large for a volume").arg(name);
        return nullptr;
    }
    try {
        auto data = std::make_shared<std::vector<uint8_t>>(kVolumeHeaderBytes);
        // The header first: a large file that is no volume isn't read.
        const qint64 headerRead = file.read(reinterpret_cast<char*>(data->data()), qint64(data->size()));
        const std::optional<VolumeHeader> header = ReadVolumeHeader(*data);
        if (headerRead != qint64(data->size()) || !header) {
            why = QStringLiteral("%1 is no volume file").arg(name);
            return nullptr;
        }
        if (fileBytes > maxBytes) {
            why = BeyondMediaMemory(path);
            return nullptr;
        }
        data->resize(size_t(fileBytes));
        const qint64 rest = fileBytes - headerRead;
        if (file.read(reinterpret_cast<char*>(data->data()) + headerRead, rest) != rest) {
            why = unreadable;
            return nullptr;
        }
        if (!VolumeDataBytes(*header)) {
            why = QStringLiteral("%1 is a volume of a kind that can't be shown").arg(name);
        } else if (!IsVolumeComplete(*data)) {
            why = QStringLiteral("%1 is damaged or cut short").arg(name);
        }
        return data;
    } catch (const std::bad_alloc&) {
        why = QStringLiteral("there is not enough memory for %1").arg(name);
        return nullptr;
    }
}

QStringList PrepareProjectChannels(ShaderProject& project, const QString& projectFolder,
                                   const FetchMedium& fetch, qint64 maxBytes) {
    MediaFinder finder(projectFolder, fetch);
    MediaLoader loader(maxBytes);
    QStringList sentences;
    for (ShaderStage& stage : project.stages) {
        if (stage.kind == kStageNone) continue;
        for (size_t i = 0; i < kChannelCount; ++i) {
            ChannelInput& channel = stage.channels[i];
            if (!IsMediumKind(channel.kind)) continue;
            PrepareChannel(stage, i, finder, loader);
            if (!channel.mediaProblem.isEmpty())
                sentences += UnusableMedium(stage.kind, uint32_t(i), channel);
        }
    }
    return sentences;
}

}  // namespace pixelgrove
