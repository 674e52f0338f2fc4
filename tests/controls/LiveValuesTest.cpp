#include "controls/Annotations.h"
#include "controls/BakedText.h"
#include "controls/LiveValues.h"
#include "controls/RangeState.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>

namespace pixelgrove {
namespace {

TEST(LiveValues, FramesSeeWhatWasPublishedWithDefinedWholeForms) {
    const struct {
        float value;
        int32_t intValue;
        uint32_t uintValue;
    } rows[] = {{0.5f, 1, 1},
                {2.49f, 2, 2},
                {-3.0f, -2, 4294967294u},  // half up and then cut towards zero
                {3e9f, -1294967296, 3000000000u},
                {std::nanf(""), 0, 0}};
    auto controls = std::make_unique<ControlSet>();
    auto table = std::make_unique<UniformTable>();
    InitialiseSpeed(*controls);
    PublishControlValues(*controls);
    controls->uniforms[0].range.value = 0.5f;  // not published
    UpdateUniformValues(*table, 1000.0f);
    EXPECT_EQ(table->count, 1);
    EXPECT_EQ(table->values[0].name, QStringLiteral("Speed"));
    EXPECT_EQ(table->values[0].floatValue, 0.03f);

    for (const auto& row : rows) {
        controls->uniforms[0].range.value = row.value;
        PublishControlValues(*controls);
        UpdateUniformValues(*table, 0.0f);
        EXPECT_EQ(table->values[0].intValue, row.intValue) << row.value;
        EXPECT_EQ(table->values[0].uintValue, row.uintValue) << row.value;
    }

    for (const auto& [given, used] : {std::pair{1000, kMaxControls}, {-5, 0}}) {
        controls->uniformCount = given;
        PublishControlValues(*controls);
        UpdateUniformValues(*table, 0.0f);
        EXPECT_EQ(table->count, used);
    }
}

struct ThreeUniforms {
    ThreeUniforms() {
        InitialiseSpeed(controls);
        controls.uniformCount = 3;
        for (size_t i : {1, 2}) {
            UniformControl& control = controls.uniforms[i];
            control.displayName = i == 1 ? QStringLiteral("gain") : QStringLiteral("mode");
            control.type = kControlFloat;
            InitialiseRange(control.range, true, true, control.displayName, 0, 10, 5);
        }
    }
    const UniformValue& Frame(size_t index, float elapsedMs = 0) {
        PublishControlValues(controls);
        UpdateUniformValues(table, elapsedMs);
        return table.values[index];
    }
    ControlSet controls;
    UniformTable table;
};

TEST(LiveValues, AWaveRunsOverSixteenSecondsBetweenItsHandles) {
    auto set = std::make_unique<ThreeUniforms>();
    RangeControlState& gain = set->controls.uniforms[1].range;
    gain.modulationKind = kModulationRamp;
    gain.low = 2;
    gain.high = 4;
    EXPECT_FLOAT_EQ(set->Frame(1, 4000).floatValue, 2.5f);
    EXPECT_EQ(set->Frame(1, 4000).intValue, 3);
    EXPECT_FLOAT_EQ(set->Frame(1, 28000).floatValue, 3.5f);
    gain.frequency = 0;
    EXPECT_TRUE(std::isnan(set->Frame(1, 4000).floatValue));
    EXPECT_EQ(set->Frame(1, 4000).intValue, 0);
    gain.modulationKind = kModulationNoise;
    const float first = set->Frame(1).floatValue;
    EXPECT_NE(set->Frame(1).floatValue, first);
}

TEST(LiveValues, AListIsItsOptionsIndexAsAnInt) {
    auto set = std::make_unique<ThreeUniforms>();
    UniformControl& mode = set->controls.uniforms[2];
    mode.kind = 1;
    mode.type = kControlList;
    mode.combo.count = 3;
    mode.combo.selection = 2;
    EXPECT_EQ(set->Frame(2).intValue, 2);
    EXPECT_EQ(set->Frame(2).type, kControlInt);
    mode.combo.randomize = 1;
    std::array<int, 3> drawn{};
    for (int i = 0; i < 300; ++i)
        ++drawn.at(size_t(set->Frame(2).intValue));
    for (int times : drawn)
        EXPECT_GT(times, 50);
    mode.combo.count = 0;
    EXPECT_EQ(set->Frame(2).intValue, 2);
}

TEST(LiveValues, TheOpenWidgetsStateGoesToTheUniformOfItsName) {
    auto set = std::make_unique<ThreeUniforms>();
    RangeControlState open = set->controls.uniforms[1].range;
    open.value = 7;
    open.modulationKind = kModulationSquare;
    open.name = QStringLiteral("Gain");
    PublishControlValues(set->controls, &open);
    EXPECT_EQ(set->controls.uniforms[1].range.value, 5.0f);
    open.name = QStringLiteral("gain");
    PublishControlValues(set->controls, &open);
    EXPECT_EQ(set->controls.uniforms[1].range.value, 7.0f);
    EXPECT_EQ(set->controls.uniforms[1].range.modulationKind, kModulationSquare);
    EXPECT_EQ(set->controls.uniforms[2].range.value, 5.0f);
    UpdateUniformValues(set->table, 0);
    EXPECT_EQ(set->table.values[1].floatValue, 10.0f);
}

TEST(LiveValues, ABakedTextIsLinesInTheCodePage) {
    EXPECT_EQ(PlainStageText(QStringLiteral(u"a\r//\u20ac\u4e2d\nb")), "a\n//\x80?\nb");
}

}  // namespace
}  // namespace pixelgrove
