// BakedNote: says in a failed compile's messages that a control's value stands in the text. Pure.
#pragma once

#include <cstdint>
#include <optional>

#include "controls/BakedText.h"
#include "core/CompileMessage.h"

namespace pixelgrove {

// One message for the stage that failed, about a baked line of its own or of Common, which is part of every
// stage: the one that the messages point at, else one whose value they name, else the first. Nothing without
// baked lines in either.
std::optional<CompileMessage> BakedNote(uint32_t stage, const BakedStages& baked,
                                        const std::array<CompileMessages, kStageCount>& errors);

}  // namespace pixelgrove
