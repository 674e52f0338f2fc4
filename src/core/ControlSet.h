// ControlSet: the second global record. The live controls of the project, uniforms and defines.
//
// Allocated at start-up and never moved; the main thread writes it. The render thread sees controls only
// through the snapshot that PublishControlValues hands over (controls/LiveValues.h).
#pragma once

#include <QString>
#include <array>
#include <cstdint>

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

// The numeric control's state.
struct RangeControlState {
    int32_t hasModulation = 0;
    int32_t isFloat = 0;
    float frequency = 0.0f;
    float phase = 0.0f;  // radians
    int32_t layoutRows = 0;
    float minimum = 0.0f;
    float maximum = 0.0f;
    float low = 0.0f;
    float high = 0.0f;
    float value = 0.0f;
    QString name;  // at most 63 code units
    int32_t modulationKind = 0;
};

struct UniformControl {
    int32_t kind = 0;  // 0 numeric, 1 list
    int32_t type = kControlNone;
    int32_t restartOnChange = 0;
    RangeControlState range;
    QString displayName;
    QString treePath;  // components separated by '!'
    uint32_t sourcePos = 0;
};

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
