#include "shadertoy/ProjectMedia.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <map>
#include <memory>
#include <new>

#include "core/BaseFolders.h"
#include "core/VolumeFile.h"
#include "persist/CubeFaces.h"
#include "persist/ImageFiles.h"
#include "platform/Files.h"

namespace pixelgrove {
namespace {

using CubeFaces = std::array<BitmapRef, 6>;

// Loads each file once, however many channels name it. Failures are remembered too.
class MediaLoader {
  public:
    const BitmapRef& Image(const QString& path) {
        const auto [place, isNew] = images_.try_emplace(path);
        if (isNew) place->second = LoadImageFile(path);
        return place->second;
    }

    const CubeFaces& Cube(const QString& path) {
        const auto [place, isNew] = cubes_.try_emplace(path);
        if (isNew) {
            CubeFaces faces;
            if (LoadCubemapFaces(path, faces)) place->second = faces;
        }
        return place->second;
    }

    const VolumeRef& Volume(const QString& path) {
        const auto [place, isNew] = volumes_.try_emplace(path);
        if (isNew) place->second = LoadVolumeFile(path);
        return place->second;
    }

  private:
    std::map<QString, BitmapRef> images_;
    std::map<QString, CubeFaces> cubes_;
    std::map<QString, VolumeRef> volumes_;
};

void PrepareChannel(ShaderStage& stage, int index, const QString& projectFolder, MediaLoader& loader) {
    ChannelInput& channel = stage.channels[size_t(index)];
    const bool isVolume = channel.kind == kChannelVolume;
    if (channel.kind != kChannelTexture && channel.kind != kChannelCubemap && !isVolume) return;
    const QString path = ResolveMedium(channel.fileName, projectFolder);
    if (path.isEmpty()) return;
    // A path that doesn't fit is looked up again by its name at the next load.
    if (path.size() < kFileNameCapacity) channel.fileName = path;

    std::array<float, 3>& resolution = stage.channelResolution[size_t(index)];
    channel.faces = {};
    channel.volumeData = nullptr;
    if (isVolume) {
        channel.volumeData = loader.Volume(path);
        if (!channel.volumeData) return;
        channel.sourceStage = -1;
        const std::optional<VolumeHeader> header = ReadVolumeHeader(*channel.volumeData);
        if (header) resolution = {float(header->x), float(header->y), float(header->z)};
        return;
    }
    channel.sourceStage = -1;
    if (channel.kind == kChannelTexture) {
        channel.faces[0] = loader.Image(path);
    } else {
        channel.faces = loader.Cube(path);
    }
    const BitmapRef& first = channel.faces[0];
    if (first) resolution = {float(first->width), float(first->height), 1.0f};
}

}  // namespace

QString MediumCachePath(const QString& name) {
    const QString base = name.mid(name.lastIndexOf(u'/') + 1);
    if (base.isEmpty() || base.startsWith(u'.')) return {};
    const bool isRefused = std::any_of(base.begin(), base.end(), [](QChar unit) {
        return unit == u'\\' || unit.category() == QChar::Other_Control;
    });
    const QString root = NormalizePath(CacheRoot());
    if (isRefused || root.isEmpty()) return {};
    return root + u'/' + kCacheAssets + u'/' + base;
}

QString ResolveMedium(const QString& name, const QString& projectFolder) {
    if (name.isEmpty()) return {};
    QString asItStands = NormalizePath(name);
    if (IsPlainFile(asItStands)) return asItStands;
    if (!projectFolder.isEmpty() && QDir::isRelativePath(asItStands)) {
        QString besideProject = NormalizePath(projectFolder) + u'/' + asItStands;
        if (IsPlainFile(besideProject)) return besideProject;
    }
    QString cached = MediumCachePath(name);
    if (cached.isEmpty() || !IsPlainFile(cached)) return {};
    return cached;
}

VolumeRef LoadVolumeFile(const QString& path) {
    if (!IsPlainFile(path)) return nullptr;
    QFile file(NormalizePath(path));
    if (!file.open(QIODevice::ReadOnly)) return nullptr;
    const qint64 fileBytes = file.size();
    if (fileBytes < qint64(kVolumeHeaderBytes) || fileBytes > kMaxVolumeFileBytes) return nullptr;
    try {
        auto data = std::make_shared<std::vector<uint8_t>>(kVolumeHeaderBytes);
        // The header first: a large file that is no volume isn't read.
        const qint64 headerRead = file.read(reinterpret_cast<char*>(data->data()), qint64(data->size()));
        if (headerRead != qint64(data->size()) || !ReadVolumeHeader(*data)) return nullptr;
        data->resize(size_t(fileBytes));
        const qint64 rest = fileBytes - headerRead;
        if (file.read(reinterpret_cast<char*>(data->data()) + headerRead, rest) != rest) return nullptr;
        return data;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void PrepareProjectChannels(ShaderProject& project, const QString& projectFolder) {
    MediaLoader loader;
    for (ShaderStage& stage : project.stages) {
        if (stage.kind == kStageNone) continue;
        for (int i = 0; i < kChannelCount; ++i)
            PrepareChannel(stage, i, projectFolder, loader);
    }
}

}  // namespace pixelgrove
