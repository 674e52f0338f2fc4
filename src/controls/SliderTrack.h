// SliderTrack: the arithmetic of a track with one handle, or with a low and a high one: where they stand,
// which one the pointer is on, and what a drag, a turn of the wheel or a key makes of its value. And how the
// colours between two handles mix.
//
// Bounds that are equal, in the wrong order or no numbers do no harm: positions stay on the track, values
// that would be no number stay what they were. Pure.
#pragma once

#include <QRect>
#include <QSize>
#include <array>
#include <cstdint>

#include "core/ControlSet.h"

namespace pixelgrove {

enum class SliderHandle : int32_t { None = 0, Low = 1, High = 2, Value = 3 };

inline constexpr int kHandleWidth = 12;     // pixels
inline constexpr int kHandleReach = 6;      // beside its box a handle can still be grabbed
inline constexpr int kGradientSteps = 256;  // at most

// The value of the handle; that of Value for None.
float HandleValue(const RangeControlState& state, SliderHandle handle);
// Takes the value into the bounds and to the handle; nothing for None and for what is no number. True when
// the handle's value is another one now.
bool SetHandleValue(RangeControlState& state, SliderHandle handle, float value);

// The value taken into the bounds.
float WithinBounds(const RangeControlState& state, float value);
// How far the value lies between the bounds, 0 to 1; 0 where that is no number.
double TrackFraction(const RangeControlState& state, float value);

// The handle's box on a track of that size: the low one has the upper two thirds, the high one the lower.
QRect HandleRect(const RangeControlState& state, SliderHandle handle, const QSize& track);
// The handle at that point, the high one where both are; beside the boxes the nearer one within reach.
SliderHandle HandleAt(const RangeControlState& state, bool twoHandles, const QSize& track,
                      const QPoint& point);

// The value that a drag to x gives.
float DraggedValue(const RangeControlState& state, double x, int trackWidth);
// How far a step of the wheel or of a key goes: a thousandth of the range, at least 1 for whole numbers.
float StepOf(const RangeControlState& state);

// The colour i steps of n behind a on the way to b; a without steps. Colours are 0x00BBGGRR.
uint32_t MixedColour(uint32_t a, uint32_t b, int i, int n);

}  // namespace pixelgrove
