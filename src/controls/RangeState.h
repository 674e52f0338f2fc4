// RangeState: what a numeric control's state starts from, and its value's text. Pure.
#pragma once

#include <QString>
#include <span>

#include "core/ControlSet.h"

namespace pixelgrove {

// "Fixed", "Random", "Noise", "Sine Wave", "Ramp Wave", "Square Wave", "Triangle Wave": by ModulationKind.
std::span<const QStringView> ModulationNames();

// A control as it is before the user touches it. The default is taken into the bounds (a default below the
// minimum is the minimum, else the smaller of maximum and default), low and high are the bounds, the
// frequency is 1, the kind Fixed. The phase stays what it was.
void InitialiseRange(RangeControlState& range, bool hasModulation, bool isFloat, const QString& name,
                     float minimum, float maximum, float defaultValue);

// A value of the control as its boxes and labels show it: "%.3f", or a truncated whole number.
QString RangeText(const RangeControlState& range, float value);

}  // namespace pixelgrove
