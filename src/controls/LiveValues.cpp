#include "controls/LiveValues.h"

#include <algorithm>
#include <cmath>

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

// Rounds half up, as far as 64 bits go; 0 for what is no number.
int64_t Rounded(float value) {
    constexpr double kLimit = 9.0e18;
    const double raised = double(value) + 0.5;
    return std::isnan(raised) ? 0 : int64_t(std::clamp(raised, -kLimit, kLimit));
}

}  // namespace

void PublishControlValues(ControlSet& controls, const RangeControlState* /*open*/) {
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

}  // namespace pixelgrove
