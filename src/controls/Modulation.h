// Modulation: the value of a numeric control at a moment. Pure; shared by preview and frame.
#pragma once

#include <cstdint>
#include <random>

#include "core/ControlSet.h"

namespace pixelgrove {

// Draws whole numbers from 0 to 32767. One thread at a time.
class ControlDice {
  public:
    static constexpr int kHighest = 32767;
    explicit ControlDice(uint32_t seed = 1) : engine_(seed) {}
    int Next() { return int(engine_() & uint32_t(kHighest)); }
    uint32_t NextWord() { return engine_(); }

  private:
    std::mt19937 engine_;
};

// lowOut + (highOut - lowOut) * n, n from 0 to 1 by the state's kind at time t of waves whose period at a
// frequency of 1 is `cycle`, both in one unit. Computed in double, rounded once. drawRandom: the kind Random
// draws a new level and leaves it in state.value. Bounds that are equal give not-a-number in Fixed, a
// frequency of 0 in every wave but the square one, which gives lowOut.
float EvaluateModulation(RangeControlState& state, double t, double cycle, double lowOut, double highOut,
                         bool drawRandom, ControlDice& dice);

// A value as whole numbers get it: plus a half, then cut towards zero, so that -3 gives -2. As far as 64 bits
// go; 0 for what is no number.
int64_t RoundedHalfUp(float value);

}  // namespace pixelgrove
