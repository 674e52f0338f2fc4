#include "controls/Modulation.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "controls/RangeState.h"

namespace pixelgrove {
namespace {

constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kFullPhase = 6.2831855f;

RangeControlState State(float minimum, float maximum, float value) {
    RangeControlState state;
    InitialiseRange(state, true, true, QStringLiteral("x"), minimum, maximum, value);
    return state;
}

TEST(Modulation, EachKindGivesItsLevelBetweenLowAndHigh) {
    const struct {
        const char* what;
        int kind;
        float frequency, phase;
        double t;
        float expected;  // between 10 and 20, of a cycle of 100
    } rows[] = {
        {"fixed takes the place of the value in its bounds", kModulationFixed, 1, 0, 77, 12.5f},
        {"random holds what was drawn as fixed does", kModulationRandom, 1, 0, 77, 12.5f},
        {"sine starts in the middle", kModulationSine, 1, 0, 0, 15},
        {"and rises", kModulationSine, 1, 0, 25, 20},
        {"and falls", kModulationSine, 1, 0, 75, 10},
        {"a quarter of the phase is a quarter of a period", kModulationSine, 1, kFullPhase / 4, 0, 20},
        {"at any frequency", kModulationSine, 5, kFullPhase / 4, 0, 20},
        {"ramp", kModulationRamp, 1, 0, 30, 13},
        {"begins anew", kModulationRamp, 1, 0, 130, 13},
        {"faster", kModulationRamp, 2.5f, 0, 30, 17.5f},
        {"the whole phase is no phase", kModulationRamp, 1, kFullPhase, 30, 13},
        {"a negative frequency turns the phase round alone", kModulationRamp, -1, kFullPhase / 4, 30, 10.5f},
        {"the remainder of a negative time is negative", kModulationRamp, 1, 0, -30, 7},
        {"square, first half", kModulationSquare, 1, 0, 49.9, 20},
        {"the middle is the second half", kModulationSquare, 1, 0, 50, 10},
        {"negative time is below any half", kModulationSquare, 1, 0, -70, 20},
        {"triangle starts in the middle", kModulationTriangle, 1, 0, 0, 15},
        {"its top", kModulationTriangle, 1, 0, 25, 20},
        {"its foot", kModulationTriangle, 1, 0, 75, 10},
        {"its head start grows with the frequency", kModulationTriangle, 2, 0, 0, 20},
        {"a kind that is none", 7, 1, 0, 30, 10},
        {"a kind below all", -1, 1, 0, 30, 10},
        {"square without frequency", kModulationSquare, 0, 0, 30, 10},
        {"the same with a phase", kModulationSquare, 0, 1, 30, 10},
        {"no frequency", kModulationSine, 0, 0, 30, kNoNumber},
        {"no frequency", kModulationRamp, 0, 1, 30, kNoNumber},
        {"no frequency", kModulationTriangle, 0, 0, 30, kNoNumber},
    };
    ControlDice dice;
    for (const auto& row : rows) {
        RangeControlState state = State(0, 8, 2);
        state.modulationKind = row.kind;
        state.frequency = row.frequency;
        state.phase = row.phase;
        const float result = EvaluateModulation(state, row.t, 100, 10, 20, false, dice);
        if (std::isnan(row.expected))
            EXPECT_TRUE(std::isnan(result)) << row.what;
        else
            EXPECT_NEAR(result, row.expected, 2e-6f) << row.what;
        EXPECT_EQ(state.value, 2.0f) << row.what;
    }
}

TEST(Modulation, FixedValuesArriveUnchanged) {
    ControlDice dice;
    for (const auto& [minimum, maximum, value] : {std::array{-1.0f, 1.0f, 0.03f},
                                                  {0.2f, 3.0f, 1.0f},
                                                  {0.1f, 1.5f, 0.42f},
                                                  {0.0f, 1e6f, 12345.678f}}) {
        RangeControlState state = State(minimum, maximum, value);
        EXPECT_EQ(EvaluateModulation(state, 1, 16000, double(minimum), double(maximum), false, dice), value);
    }
    RangeControlState narrow = State(3, 3, 3);
    EXPECT_TRUE(std::isnan(EvaluateModulation(narrow, 1, 16000, 3, 3, false, dice)));
}

TEST(Modulation, ChanceIsDrawnOnEachCallOrWhenAsked) {
    ControlDice dice;
    RangeControlState state = State(0, 100, 50);
    state.modulationKind = kModulationNoise;
    const float first = EvaluateModulation(state, 0, 1, 0, 1, false, dice);
    const float second = EvaluateModulation(state, 0, 1, 0, 1, false, dice);
    EXPECT_NE(first, second);
    EXPECT_EQ(state.value, 50.0f);
    for (int i = 0; i < 1000; ++i) {
        const float level = EvaluateModulation(state, 0, 1, 0, 1, false, dice);
        ASSERT_TRUE(level >= 0.0f && level <= 1.0f) << level;
    }

    state.modulationKind = kModulationRandom;
    const float drawn = EvaluateModulation(state, 0, 1, 0, 1, true, dice);
    EXPECT_EQ(state.value, drawn);  // a number from 0 to 1 whatever the bounds are
    EXPECT_FLOAT_EQ(EvaluateModulation(state, 0, 1, 0, 1, false, dice), drawn / 100);
}

}  // namespace
}  // namespace pixelgrove
