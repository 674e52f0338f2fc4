#include "render/PastFrames.h"

#include <GL/glew.h>

#include <QRegularExpression>

#include "render/source/SourceAssembly.h"

namespace pixelgrove {

namespace {

bool Uses(const ShaderStage& stage, const char* uniform) {
    return glGetUniformLocation(stage.program, uniform) >= 0;
}

bool UsesChannel(const ShaderStage& stage, uint32_t index) {
    char name[] = "iChannel0";
    name[8] = char('0' + index);
    return Uses(stage, name);
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
        use.readsDate |= !context.fixedDate && Uses(stage, "iDate");
        use.readsFrameRate |= !context.fixedFrameRate && Uses(stage, "iFrameRate");
        bool readsPast = MayLeavePixels(*text);
        for (uint32_t i = 0; i < kChannelCount; ++i) {
            const ChannelInput& channel = stage.channels[i];
            if (channel.kind == kChannelUnused || !UsesChannel(stage, i)) continue;
            use.readsChannels = true;
            readsPast |= ReadsStage(channel) && channel.sourceStage >= int32_t(stage.kind);
        }
        if (readsPast && use.stage == kStageNone) use.stage = stage.kind;
    }
    return use;
}

}  // namespace pixelgrove
