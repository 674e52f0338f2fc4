// ControlSet: the second global record. The live controls of the project, uniforms and defines.
//
// Allocated at start-up and never moved; the main thread writes it. The render thread sees controls only
// through the snapshot that PublishControlValues hands over (controls/LiveValues.h).
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <vector>

namespace pixelgrove {

constexpr int kMaxControls = 40;

enum ControlValueType : int32_t {
    kControlNone = 0,
    kControlFloat = 1,
    kControlInt = 2,
    kControlUint = 3,
    kControlBool = 4,
    kControlList = 5,
};

// How a numeric control's value comes about. The numbers are those of the list that the user picks from.
enum ModulationKind : int32_t {
    kModulationFixed = 0,   // the single handle sets the value
    kModulationRandom = 1,  // one drawn level, held
    kModulationNoise = 2,   // a new random level each evaluation
    kModulationSine = 3,    // between low and high, as all that follow
    kModulationRamp = 4,
    kModulationSquare = 5,  // high in the first half period, low in the second
    kModulationTriangle = 6,
    kModulationKinds = 7,
};

// The numeric control's state.
struct RangeControlState {
    int32_t hasModulation = 0;  // 1 for uniforms; 0 has one handle and no modulation
    int32_t isFloat = 0;        // 1 shows values with three decimals, 0 as truncated whole numbers
    float frequency = 0.0f;     // 1 is one period in 16 seconds
    float phase = 0.0f;         // radians
    int32_t layoutRows = 0;
    float minimum = 0.0f;
    float maximum = 0.0f;
    float low = 0.0f;
    float high = 0.0f;
    float value = 0.0f;
    QString name;  // at most 63 code units
    int32_t modulationKind = kModulationFixed;
};

// The list control's state.
struct ComboControlState {
    int32_t randomize = 0;  // 1: every frame takes an option by chance
    int32_t layoutRows = 0;
    int32_t selection = 0;  // index of the chosen option
    int32_t count = 0;      // of options
};

struct ControlOption {
    QString text;
    int32_t index = 0;  // its place in the list
};

struct UniformControl {
    int32_t kind = 0;  // 0 numeric, 1 list
    int32_t type = kControlNone;
    int32_t restartOnChange = 0;  // 1 for defines
    RangeControlState range;
    ComboControlState combo;
    std::vector<ControlOption> options;  // of a list; combo.count of them
    QString keyword, name, value;        // the three words of a #define line
    QString displayName;
    QString treePath;        // components separated by '!'
    uint32_t sourcePos = 0;  // of the matched keyword, in code units of the scanned text
};

// Records stay where they are between scans, and those past the count keep their contents: a scan compares
// with them to keep what the user set.
struct ControlSet {
    int32_t uniformCount = 0;  // record 0 of the uniforms is always "Speed"
    int32_t defineCount = 0;
    std::array<UniformControl, kMaxControls> uniforms;
    std::array<UniformControl, kMaxControls> defines;
};

// One named typed value, as the frame renderer sends it to the stage programs.
struct UniformValue {
    QString name;
    int32_t type = kControlNone;  // kControlFloat .. kControlBool
    uint8_t boolValue = 0;
    uint32_t uintValue = 0;
    int32_t intValue = 0;
    float floatValue = 0.0f;
};

// The record made at start-up; null before and after. Main thread.
ControlSet* Controls();

}  // namespace pixelgrove
