#include "ui/text/ChannelTooltip.h"

#include "media/VolumeFile.h"

namespace pixelgrove {

namespace {

// " channel" or " channels" and the kind of the samples.
QString Samples(uint32_t count) {
    return QStringLiteral("[ %1 channel%2, uint8 ]\n")
        .arg(count)
        .arg(count > 1 ? QStringLiteral("s") : QString());
}

}  // namespace

QString ChannelTooltip(uint32_t stage, uint32_t channelIndex, const ChannelInput& channel) {
    if (stage >= uint32_t(kStageCount) || channelIndex >= uint32_t(kChannelCount)) return {};
    QString text = QStringLiteral("Input to %1 - Channel %2: %3\n")
                       .arg(StageName(stage), QString::number(channelIndex), ChannelTypeName(channel.kind));
    if (channel.sourceStage > 0)
        text += QStringLiteral("Source: %1\n").arg(StageName(uint32_t(channel.sourceStage)));
    // Names come last into their lines: a per cent sign in one is no place for an argument.
    if (!channel.fileName.isEmpty()) text += QStringLiteral("Filename: ") + channel.fileName + u'\n';
    if (const BitmapRef& first = channel.faces[0]) {
        text += channel.kind == kChannelCubemap ? QStringLiteral("Cubemap: ") : QStringLiteral("Texture: ");
        text += QStringLiteral("%1 x %2 ").arg(first->width).arg(first->height);
        text += Samples(uint32_t(first->bitsPerPixel) / 8);
    }
    if (channel.volumeData) {
        if (const std::optional<VolumeHeader> header = ReadVolumeHeader(*channel.volumeData)) {
            text += QStringLiteral("Volume: %1 x %2 x %3 ").arg(header->x).arg(header->y).arg(header->z);
            text += Samples(header->sampleKind);
        }
    }
    return text;
}

}  // namespace pixelgrove
