#include "controls/RangeState.h"

#include <algorithm>

namespace pixelgrove {

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

}  // namespace pixelgrove
