// LiveValues: the road of control values from the main thread's records to each frame.
//
// PublishControlValues (main thread) copies what the renderer needs of the ControlSet into a locked snapshot;
// UpdateUniformValues (render thread) turns the snapshot into this frame's UniformValue table.
#pragma once

#include <array>

#include "controls/Modulation.h"
#include "core/ControlSet.h"

namespace pixelgrove {

struct UniformTable {
    int32_t count = 0;
    std::array<UniformValue, kMaxControls> values;
    ControlDice dice;  // what chance gives this table: the same from one run to the next
};

// Hands the uniform records over to the frames that follow. open, when given, is the state of the numeric
// widget on screen; the records whose displayName is its name, cut to what a state holds, take it over
// first. Main thread.
void PublishControlValues(ControlSet& controls, const RangeControlState* open = nullptr);

// Fills the table from the last published snapshot: numbers as their modulation gives them, int and uint
// rounded half up; of lists the chosen option's index, or one by chance. elapsedMs is the time base of
// modulation. Any thread that owns the table.
void UpdateUniformValues(UniformTable& table, float elapsedMs);

// How far the waves are: the time of the frame that was filled last, in periods at a frequency of 1. Below 0
// before the first frame. Any thread.
double WaveTime();

}  // namespace pixelgrove
