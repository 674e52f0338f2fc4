// ControlRecords: the records of a ControlSet that are in use, those up to the counts. Pure.
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "core/ControlSet.h"

namespace pixelgrove {

// A count that is none of an array's gives the nearest that is.
inline size_t UsedCount(int32_t count) {
    return size_t(std::clamp(count, 0, kMaxControls));
}

inline std::span<UniformControl> UniformsOf(ControlSet& controls) {
    return std::span(controls.uniforms).first(UsedCount(controls.uniformCount));
}
inline std::span<const UniformControl> UniformsOf(const ControlSet& controls) {
    return std::span(controls.uniforms).first(UsedCount(controls.uniformCount));
}

inline std::span<UniformControl> DefinesOf(ControlSet& controls) {
    return std::span(controls.defines).first(UsedCount(controls.defineCount));
}
inline std::span<const UniformControl> DefinesOf(const ControlSet& controls) {
    return std::span(controls.defines).first(UsedCount(controls.defineCount));
}

}  // namespace pixelgrove
