// What the frames of a project need of those before them and of clocks, so that a run may begin in the
// middle.
//
// Render thread, with the context current and the project compiled.
#pragma once

#include "render/RenderContext.h"

namespace pixelgrove {

struct PastUse {
    // The first stage whose picture depends on a past frame: it reads its own or a later stage's, or may
    // leave pixels undrawn, which then keep what they held. kStageNone when there is none.
    uint32_t stage = kStageNone;
    // A stage reads a channel. Filter, wrap and mipmaps are set while iFrame is 0, for stages in an order
    // that matters, so those two frames have to be drawn.
    bool readsChannels = false;
    // A stage reads what the machine's clocks give, where the context has none of its own.
    bool readsDate = false;
    bool readsFrameRate = false;
};

// Nothing when the text of a stage can't be had anew.
std::optional<PastUse> FindPastUse(RenderContext& context);

}  // namespace pixelgrove
