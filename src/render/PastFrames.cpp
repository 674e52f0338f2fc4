#include "render/PastFrames.h"

#include <GL/glew.h>

#include <QRegularExpression>

#include "render/source/SourceAssembly.h"

namespace pixelgrove {

namespace {

bool UsesChannel(const ShaderStage& stage, uint32_t index) {
    char name[] = "iChannel0";
    name[8] = char('0' + index);
    return glGetUniformLocation(stage.program, name) >= 0;
}

bool ReadsStage(const ChannelInput& channel) {
    return channel.kind == kChannelBuffer || channel.kind == kChannelCubeA;
}

// Comments count as well: they cost time, never a wrong picture.
bool MayLeavePixels(const QByteArray& text) {
    static const QRegularExpression words(QStringLiteral("\\b(discard|demote)\\b"));
    return QString::fromLatin1(text).contains(words);
}

}  // namespace

std::optional<PastUse> FindPastUse(RenderContext& context) {
    PastUse use;
    for (const ShaderStage& stage : context.project.stages) {
        if (!IsRenderedStage(stage.kind)) continue;
        const std::optional<QByteArray> text =
            AssembleStageSource(context.project, context.includeContext, stage.kind, context.versionLine);
        if (!text) return std::nullopt;
        bool readsPast = MayLeavePixels(*text);
        for (uint32_t i = 0; i < kChannelCount; ++i) {
            const ChannelInput& channel = stage.channels[i];
            if (channel.kind == kChannelUnused || !UsesChannel(stage, i)) continue;
            const bool isOwn = channel.kind == kChannelTexture || channel.kind == kChannelCubemap ||
                               channel.kind == kChannelVolume;
            use.sharesTextures |= !isOwn;
            readsPast |= ReadsStage(channel) && channel.sourceStage >= int32_t(stage.kind);
        }
        if (readsPast && use.stage == kStageNone) use.stage = stage.kind;
    }
    return use;
}

}  // namespace pixelgrove
