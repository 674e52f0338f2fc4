// What the tooltip of a channel's thumbnail says.
//
// Pure; any thread that owns the channel.
#pragma once

#include <QString>

#include "core/Stages.h"

namespace pixelgrove {

// One line each, every line with its end: what the channel reads, and where there is one the source stage,
// the file, the size of the picture and of the volume. Empty for a stage above 7 or a channel above 3.
QString ChannelTooltip(uint32_t stage, uint32_t channelIndex, const ChannelInput& channel);

}  // namespace pixelgrove
