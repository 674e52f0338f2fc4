#include "ui/channels/ChannelDrop.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <utility>

#include "media/CubeFaces.h"
#include "media/ImageFiles.h"
#include "render/ChannelTextures.h"
#include "shadertoy/ProjectMedia.h"

namespace pixelgrove {

namespace {

bool IsVolume(const QString& path) {
    return path.endsWith(QStringLiteral(".bin"), Qt::CaseInsensitive);
}

bool IsPicture(const QString& path) {
    static const QStringList endings{QStringLiteral("png"),  QStringLiteral("jpg"),  QStringLiteral("jpeg"),
                                     QStringLiteral("gif"),  QStringLiteral("bmp"),  QStringLiteral("tif"),
                                     QStringLiteral("tiff"), QStringLiteral("webp"), QStringLiteral("ppm"),
                                     QStringLiteral("pgm"),  QStringLiteral("pbm"),  QStringLiteral("dib")};
    return endings.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}

}  // namespace

QString DroppedMedium(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile()) return {};
    const QString path = urls.first().toLocalFile();
    return IsVolume(path) || IsPicture(path) ? path : QString();
}

QString UseDroppedMedium(const QString& path, ChannelInput& channel) {
    ChannelInput filled;
    QString problem;
    if (IsVolume(path)) {
        filled.volumeData = LoadVolumeFile(path, &problem);
        if (!filled.volumeData) return problem;
        filled.kind = kChannelVolume;
    } else if (channel.kind == kChannelCubemap && LoadCubemapFaces(path, filled.faces)) {
        filled.kind = kChannelCubemap;
    } else {
        filled.faces[0] = LoadImageFile(path, &problem);
        if (!filled.faces[0]) return problem;
        filled.kind = kChannelTexture;
    }
    filled.fileName = FittedFileName(path);
    filled.mediaProblem = problem;
    DefaultSampler(filled);
    ReleaseChannel(channel);
    channel = std::move(filled);
    return {};
}

}  // namespace pixelgrove
