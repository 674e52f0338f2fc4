#include "controls/LiveValues.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <memory>
#include <thread>

namespace pixelgrove {
namespace {

std::unique_ptr<ControlSet> WithSpeed() {
    auto controls = std::make_unique<ControlSet>();
    InitialiseSpeed(*controls);
    return controls;
}

TEST(LiveValues, SpeedAsItIsMade) {
    auto controls = std::make_unique<ControlSet>();
    controls->uniforms[0].range.phase = 2.5f;
    controls->uniforms[0].range.modulationKind = 4;
    controls->uniforms[0].range.value = 0.9f;
    controls->uniforms[0].restartOnChange = 1;
    InitialiseSpeed(*controls);
    const UniformControl& speed = controls->uniforms[0];
    EXPECT_EQ(controls->uniformCount, 1);
    EXPECT_EQ(speed.type, kControlFloat);
    EXPECT_EQ(speed.restartOnChange, 0);
    EXPECT_EQ(speed.displayName, QStringLiteral("Speed"));
    EXPECT_EQ(speed.treePath, QStringLiteral("Uniforms!Speed"));
    EXPECT_EQ(speed.range.name, QStringLiteral("Speed"));
    EXPECT_EQ(speed.range.value, 0.03f);
    EXPECT_EQ(speed.range.low, -1.0f);
    EXPECT_EQ(speed.range.high, 1.0f);
    EXPECT_EQ(speed.range.frequency, 1.0f);
    EXPECT_EQ(speed.range.modulationKind, 0);
    EXPECT_EQ(speed.range.hasModulation, 1);
    EXPECT_EQ(speed.range.isFloat, 1);
    EXPECT_EQ(speed.range.phase, 2.5f);  // kept
}

TEST(LiveValues, FramesSeeWhatWasPublished) {
    auto controls = WithSpeed();
    auto table = std::make_unique<UniformTable>();
    PublishControlValues(*controls);
    controls->uniforms[0].range.value = 0.5f;
    UpdateUniformValues(*table, 1000.0f);
    EXPECT_EQ(table->count, 1);
    EXPECT_EQ(table->values[0].name, QStringLiteral("Speed"));
    EXPECT_EQ(table->values[0].type, kControlFloat);
    EXPECT_EQ(table->values[0].floatValue, 0.03f);  // the change was not published
    PublishControlValues(*controls);
    UpdateUniformValues(*table, 2000.0f);
    EXPECT_EQ(table->values[0].floatValue, 0.5f);
}

TEST(LiveValues, WholeFormsAreRoundedAndAlwaysDefined) {
    struct Row {
        float value;
        int32_t intValue;
        uint32_t uintValue;
    };
    const float infinity = std::numeric_limits<float>::infinity();
    const Row rows[] = {{0.03f, 0, 0},
                        {0.5f, 1, 1},
                        {2.49f, 2, 2},
                        {-3.0f, -2, 4294967294u},  // half up and then cut towards zero
                        {3e9f, -1294967296, 3000000000u},
                        {std::nanf(""), 0, 0}};
    auto controls = WithSpeed();
    auto table = std::make_unique<UniformTable>();
    for (const Row& row : rows) {
        controls->uniforms[0].range.value = row.value;
        PublishControlValues(*controls);
        UpdateUniformValues(*table, 0.0f);
        EXPECT_EQ(table->values[0].intValue, row.intValue) << row.value;
        EXPECT_EQ(table->values[0].uintValue, row.uintValue) << row.value;
    }
    for (float value : {infinity, -infinity}) {
        controls->uniforms[0].range.value = value;
        PublishControlValues(*controls);
        UpdateUniformValues(*table, 0.0f);
        EXPECT_EQ(table->values[0].floatValue, value);
    }
}

TEST(LiveValues, ACountBeyondTheTableIsCut) {
    auto controls = WithSpeed();
    auto table = std::make_unique<UniformTable>();
    for (const auto& [given, used] : {std::pair{1000, kMaxControls}, {-5, 0}}) {
        controls->uniformCount = given;
        PublishControlValues(*controls);
        UpdateUniformValues(*table, 0.0f);
        EXPECT_EQ(table->count, used);
    }
}

TEST(LiveValues, AFrameNeverSeesHalfAPublication) {
    auto controls = WithSpeed();
    controls->uniforms[1] = controls->uniforms[0];
    controls->uniformCount = 2;
    PublishControlValues(*controls);
    std::atomic<bool> done{false};
    std::atomic<int> torn{0};
    std::atomic<int> frames{0};
    std::thread renderer([&] {
        auto table = std::make_unique<UniformTable>();
        while (!done) {
            UpdateUniformValues(*table, 0.0f);
            if (table->values[0].floatValue != table->values[1].floatValue) ++torn;
            ++frames;
        }
    });
    // At least so many publications, and as many more as it takes until frames ran beside them.
    for (int i = 0; i < 20000 || frames < 1000; ++i) {
        controls->uniforms[0].range.value = controls->uniforms[1].range.value = float(i);
        PublishControlValues(*controls);
    }
    done = true;
    renderer.join();
    EXPECT_EQ(torn, 0);
}

TEST(LiveValues, BakedTextIsNarrowWithLfLineEnds) {
    EXPECT_EQ(BakeDefines(QStringLiteral("a\r\nb\u20ac\u03b1\n")), QByteArray("a\n\nb\x80?\n"));
    EXPECT_TRUE(BakeDefines(QString()).isEmpty());
}

}  // namespace
}  // namespace pixelgrove
