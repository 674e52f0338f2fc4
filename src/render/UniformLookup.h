// What the compiled programs say of the user's own uniforms. Render thread, with the context current.
#pragma once

#include <optional>

#include "core/ControlSet.h"
#include "render/RenderContext.h"

namespace pixelgrove {

// The type of a scalar uniform that any stage's program uses; nothing when none does or it is of another
// type.
std::optional<ControlValueType> FindUniformType(const RenderContext& context, const QString& name);

}  // namespace pixelgrove
