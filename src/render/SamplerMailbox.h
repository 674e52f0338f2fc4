// SamplerMailbox: how the filter, wrap and flip that are chosen while a shader plays reach its run.
//
// One in each run. Post belongs to the main thread, Take to the render thread.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/Stages.h"
#include "platform/SynchronizedValue.h"

namespace pixelgrove {

struct RenderContext;

struct SamplerChange {
    uint32_t stage = 0;
    uint32_t channel = 0;
    SamplerSettings settings;
};

class SamplerMailbox {
  public:
    // Nothing for a stage above 7 or a channel above 3.
    void Post(uint32_t stage, uint32_t channel, const SamplerSettings& settings);
    // What was posted since the last call, at most one change for each channel.
    std::vector<SamplerChange> Take();

  private:
    struct Slots {
        std::array<std::array<std::optional<SamplerSettings>, kChannelCount>, kStageCount> settings;
        bool anyNew = false;
    };
    SynchronizedValue<Slots> slots_;
};

// Takes what was posted into the running channels, before a frame. Rows are turned at the upload, so a
// picture whose flip changed is uploaded again. Render thread, with the context current.
void TakeSamplerChanges(SamplerMailbox& mailbox, RenderContext& context);

}  // namespace pixelgrove
