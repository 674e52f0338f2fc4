#include "controls/Annotations.h"

#include <algorithm>

#include "controls/RangeState.h"

namespace pixelgrove {

void InitialiseSpeed(ControlSet& controls) {
    const QString name = QStringLiteral("Speed");
    UniformControl& speed = controls.uniforms[0];
    speed.kind = 0;
    speed.type = kControlFloat;
    speed.restartOnChange = 0;
    speed.sourcePos = 0;
    speed.displayName = name;
    speed.treePath = QStringLiteral("Uniforms!Speed");
    InitialiseRange(speed.range, true, true, name, -1.0f, 1.0f, 0.03f);
    controls.uniformCount = std::max(controls.uniformCount, 1);
}

}  // namespace pixelgrove
