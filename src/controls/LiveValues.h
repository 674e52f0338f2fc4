// LiveValues: the road of control values from the main thread's records to each frame.
//
// PublishControlValues (main thread) copies what the renderer needs of the ControlSet into a locked snapshot;
// UpdateUniformValues (render thread) turns the snapshot into this frame's UniformValue table.
#pragma once

#include <array>

#include "core/ControlSet.h"

namespace pixelgrove {

struct UniformTable {
    int32_t count = 0;
    std::array<UniformValue, kMaxControls> values;
};

// Hands the records over to the frames that follow. open, when given, is the state of the numeric widget on
// screen; it is first taken over by the uniform record that has its name. Main thread.
void PublishControlValues(ControlSet& controls, const RangeControlState* open = nullptr);

// Fills the table from the last published snapshot, each value as its modulation gives it. elapsedMs is the
// time base of modulation. Any one thread at a time.
void UpdateUniformValues(UniformTable& table, float elapsedMs);

}  // namespace pixelgrove
