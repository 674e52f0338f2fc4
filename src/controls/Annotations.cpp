#include "controls/Annotations.h"

#include <algorithm>

#include "controls/AnnotationLines.h"
#include "controls/ControlRecords.h"
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

std::vector<ControlOption> SplitOptionList(QStringView text, int32_t& defaultIndex) {
    std::vector<ControlOption> options;
    options.reserve(size_t(text.count(u',')) + 1);
    for (const QStringView segment : text.tokenize(u',')) {
        const int32_t index = int32_t(options.size());
        if (segment.contains(u'@')) defaultIndex = index;
        options.push_back({WithoutLeading(segment, u"@,\t ").left(kMaxControlLabel).toString(), index});
    }
    return options;
}

void FreeControlOptions(ControlSet& controls) {
    for (const std::span records : {UniformsOf(controls), DefinesOf(controls)})
        for (UniformControl& control : records)
            std::vector<ControlOption>().swap(control.options);
}

}  // namespace pixelgrove
