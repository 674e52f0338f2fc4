#include "render/SamplerMailbox.h"

#include <GL/glew.h>

#include <utility>

#include "render/ChannelTextures.h"

namespace pixelgrove {

void SamplerMailbox::Post(uint32_t stage, uint32_t channel, const SamplerSettings& settings) {
    if (stage >= uint32_t(kStageCount) || channel >= uint32_t(kChannelCount)) return;
    const Hold slots(slots_);
    slots->settings[stage][channel] = settings;
    slots->anyNew = true;
}

std::vector<SamplerChange> SamplerMailbox::Take() {
    std::vector<SamplerChange> changes;
    const Hold slots(slots_);
    if (!std::exchange(slots->anyNew, false)) return changes;
    for (uint32_t stage = 0; stage < kStageCount; ++stage) {
        for (uint32_t i = 0; i < kChannelCount; ++i) {
            std::optional<SamplerSettings>& slot = slots->settings[stage][i];
            if (slot) changes.push_back({stage, i, *slot});
            slot.reset();
        }
    }
    return changes;
}

void TakeSamplerChanges(SamplerMailbox& mailbox, RenderContext& context) {
    for (const SamplerChange& change : mailbox.Take()) {
        ChannelInput& channel = context.project.stages[change.stage].channels[change.channel];
        const bool flips = channel.vflip != change.settings.vflip;
        channel.Sampler() = change.settings;
        const bool isPicture = channel.kind == kChannelTexture || channel.kind == kChannelCubemap;
        if (!flips || !isPicture || channel.texture == 0) continue;
        glDeleteTextures(1, &channel.texture);
        UploadChannelTexture(context, change.stage, change.channel);
    }
}

}  // namespace pixelgrove
