#include "controls/RangeState.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pixelgrove {

namespace {

constexpr std::array<QStringView, kModulationKinds> kNames = {
    u"Fixed", u"Random", u"Noise", u"Sine Wave", u"Ramp Wave", u"Square Wave", u"Triangle Wave"};

// Cut towards zero, as far as 64 bits go; 0 for what is no number.
qlonglong Truncated(float value) {
    constexpr float kLimit = 9.0e18f;
    return std::isnan(value) ? 0 : qlonglong(std::clamp(value, -kLimit, kLimit));
}

}  // namespace

std::span<const QStringView> ModulationNames() {
    return kNames;
}

void InitialiseRange(RangeControlState& range, bool hasModulation, bool isFloat, const QString& name,
                     float minimum, float maximum, float defaultValue) {
    range.hasModulation = hasModulation;
    range.isFloat = isFloat;
    range.frequency = 1.0f;
    range.low = minimum;
    range.high = maximum;
    range.minimum = minimum;
    range.maximum = maximum;
    range.value = minimum > defaultValue ? minimum : std::min(maximum, defaultValue);
    range.layoutRows = 4;
    range.modulationKind = kModulationFixed;
    range.name = name;
}

QString RangeText(const RangeControlState& range, float value) {
    return range.isFloat ? QString::asprintf("%.3f", double(value)) : QString::number(Truncated(value));
}

}  // namespace pixelgrove
