#include "controls/LiveValues.h"

#include <algorithm>
#include <atomic>

#include "controls/Annotations.h"
#include "controls/ControlRecords.h"
#include "controls/Modulation.h"
#include "platform/SynchronizedValue.h"

namespace pixelgrove {

namespace {

constexpr double kWavePeriodMs = 16000.0;  // at a frequency of 1

// What a frame needs of one control.
struct PublishedControl {
    QString name;
    int32_t kind = 0;
    int32_t type = kControlNone;
    RangeControlState range;
    ComboControlState combo;
};

struct Snapshot {
    int32_t count = 0;
    std::array<PublishedControl, kMaxControls> controls;
};

SynchronizedValue<Snapshot>& Published() {
    static SynchronizedValue<Snapshot> snapshot;
    return snapshot;
}

// Of the last frame; written by the thread that fills it.
std::atomic<float> latestMs = -1.0f;

void SetList(const ComboControlState& combo, ControlDice& dice, UniformValue& entry) {
    const bool draws = combo.randomize != 0 && combo.count > 0;
    entry.type = kControlInt;
    entry.intValue = draws ? int32_t(dice.NextWord() % uint32_t(combo.count)) : combo.selection;
}

void SetNumber(PublishedControl& control, float elapsedMs, ControlDice& dice, UniformValue& entry) {
    RangeControlState& range = control.range;
    const float value = EvaluateModulation(range, double(elapsedMs), kWavePeriodMs, double(range.low),
                                           double(range.high), false, dice);
    const int64_t whole = RoundedHalfUp(value);
    entry.type = control.type;
    entry.floatValue = value;
    entry.intValue = int32_t(whole);
    entry.uintValue = uint32_t(whole);
}

}  // namespace

void PublishControlValues(ControlSet& controls, const RangeControlState* open) {
    const Hold snapshot(Published());
    const std::span records = UniformsOf(controls);
    snapshot->count = int32_t(records.size());
    for (size_t i = 0; i < records.size(); ++i) {
        UniformControl& control = records[i];
        // A state holds no more of a name than this.
        if (open && open->name == control.displayName.left(kMaxControlName)) control.range = *open;
        snapshot->controls[i] = {control.displayName, control.kind, control.type, control.range,
                                 control.combo};
    }
}

void UpdateUniformValues(UniformTable& table, float elapsedMs) {
    latestMs.store(elapsedMs, std::memory_order_relaxed);
    const Hold snapshot(Published());
    table.count = snapshot->count;
    for (size_t i = 0; i < size_t(snapshot->count); ++i) {
        PublishedControl& control = snapshot->controls[i];
        UniformValue& entry = table.values[i];
        entry.name = control.name;
        if (control.kind == 1)
            SetList(control.combo, table.dice, entry);
        else
            SetNumber(control, elapsedMs, table.dice, entry);
    }
}

double WaveTime() {
    return double(latestMs.load(std::memory_order_relaxed)) / kWavePeriodMs;
}

}  // namespace pixelgrove
