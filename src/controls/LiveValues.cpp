#include "controls/LiveValues.h"

#include <algorithm>
#include <cmath>

#include "platform/CodePage.h"
#include "platform/SynchronizedValue.h"

namespace pixelgrove {

namespace {

// What a frame needs of one control.
struct PublishedControl {
    QString name;
    int32_t type = kControlNone;
    RangeControlState range;
};

struct Snapshot {
    int32_t count = 0;
    std::array<PublishedControl, kMaxControls> controls;
};

SynchronizedValue<Snapshot>& Published() {
    static SynchronizedValue<Snapshot> snapshot;
    return snapshot;
}

void InitialiseRange(RangeControlState& range, const QString& name, float minimum, float maximum,
                     float defaultValue) {
    range.frequency = 1.0f;
    range.low = minimum;
    range.high = maximum;
    range.minimum = minimum;
    range.maximum = maximum;
    range.value = minimum > defaultValue ? minimum : std::min(maximum, defaultValue);
    range.layoutRows = 4;
    range.modulationKind = 0;
    range.name = name;
    // The phase is left as it was.
}

// Rounds half up, as far as 64 bits go; 0 for what is no number.
int64_t Rounded(float value) {
    constexpr double kLimit = 9.0e18;
    const double raised = double(value) + 0.5;
    return std::isnan(raised) ? 0 : int64_t(std::clamp(raised, -kLimit, kLimit));
}

}  // namespace

void InitialiseSpeed(ControlSet& controls) {
    const QString name = QStringLiteral("Speed");
    UniformControl& speed = controls.uniforms[0];
    speed.kind = 0;
    speed.type = kControlFloat;
    speed.restartOnChange = 0;
    speed.sourcePos = 0;
    speed.displayName = name;
    speed.treePath = QStringLiteral("Uniforms!Speed");
    speed.range.hasModulation = 1;
    speed.range.isFloat = 1;
    InitialiseRange(speed.range, name, -1.0f, 1.0f, 0.03f);
    controls.uniformCount = std::max(controls.uniformCount, 1);
}

void PublishControlValues(const ControlSet& controls) {
    const Hold snapshot(Published());
    snapshot->count = std::clamp(controls.uniformCount, 0, kMaxControls);
    for (size_t i = 0; i < size_t(snapshot->count); ++i) {
        const UniformControl& control = controls.uniforms[i];
        snapshot->controls[i] = {control.displayName, control.type, control.range};
    }
}

void UpdateUniformValues(UniformTable& table, float /*elapsedMs*/) {
    // Every control is of the kind Fixed: its value stands still, so the time base plays no part.
    const Hold snapshot(Published());
    table.count = snapshot->count;
    for (size_t i = 0; i < size_t(snapshot->count); ++i) {
        const PublishedControl& control = snapshot->controls[i];
        UniformValue& entry = table.values[i];
        entry.name = control.name;
        entry.type = control.type;
        entry.floatValue = control.range.value;
        const int64_t whole = Rounded(control.range.value);
        entry.intValue = int32_t(whole);
        entry.uintValue = uint32_t(whole);
    }
}

QByteArray BakeDefines(const QString& stageText) {
    QByteArray bytes = ToCodePage(stageText);
    return bytes.replace('\r', '\n');
}

}  // namespace pixelgrove
