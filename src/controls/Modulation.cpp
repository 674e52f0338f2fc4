#include "controls/Modulation.h"

#include <algorithm>
#include <cmath>

namespace pixelgrove {

namespace {

constexpr double kFullTurn = 6.2831855f;  // as the phase slider's end has it, so that its end is one period

double Fraction(const RangeControlState& state) {
    return (double(state.value) - double(state.minimum)) / (double(state.maximum) - double(state.minimum));
}

double Level(ControlDice& dice) {
    return double(dice.Next()) / ControlDice::kHighest;
}

// The four waves at time t, from 0 to 1.
double Wave(const RangeControlState& state, double t, double cycle) {
    const double frequency = std::abs(double(state.frequency));
    const double shifted = t + double(state.phase) / kFullTurn * (cycle / double(state.frequency));
    const double within = std::fmod(frequency * shifted, cycle);
    switch (state.modulationKind) {
        case kModulationSine:
            return 0.5 * std::sin(within / cycle * kFullTurn) + 0.5;
        case kModulationRamp:
            return within / cycle;
        case kModulationSquare:
            return cycle * 0.5 > within ? 1.0 : 0.0;
        case kModulationTriangle: {
            const double ahead = std::fmod(frequency * (cycle * 0.25 + shifted), cycle);
            return (cycle - std::abs(2.0 * ahead - cycle)) / cycle;
        }
        default:
            return 0.0;
    }
}

double Amount(RangeControlState& state, double t, double cycle, bool drawRandom, ControlDice& dice) {
    switch (state.modulationKind) {
        case kModulationRandom: {
            if (!drawRandom) return Fraction(state);
            const double level = Level(dice);
            state.value = float(level);
            return level;
        }
        case kModulationNoise:
            return Level(dice);
        case kModulationFixed:
            return Fraction(state);
        default:
            return Wave(state, t, cycle);
    }
}

}  // namespace

float EvaluateModulation(RangeControlState& state, double t, double cycle, double lowOut, double highOut,
                         bool drawRandom, ControlDice& dice) {
    return float(lowOut + (highOut - lowOut) * Amount(state, t, cycle, drawRandom, dice));
}

int64_t RoundedHalfUp(float value) {
    constexpr double kLimit = 9.0e18;
    const double raised = double(value) + 0.5;
    return std::isnan(raised) ? 0 : int64_t(std::clamp(raised, -kLimit, kLimit));
}

}  // namespace pixelgrove
