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

// Sets record 0 of the uniforms to the built-in control "Speed": -1 to 1, default 0.03.
void InitialiseSpeed(ControlSet& controls);

// Main thread.
void PublishControlValues(const ControlSet& controls);

// Fills the table from the last published snapshot. elapsedMs is the time base of modulation. Any one thread
// at a time.
void UpdateUniformValues(UniformTable& table, float elapsedMs);

// A stage's text as it goes to the assembler: in the code page, each CR replaced by LF.
QByteArray BakeDefines(const QString& stageText);

}  // namespace pixelgrove
