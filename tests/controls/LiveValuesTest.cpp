#include "controls/LiveValues.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <memory>
#include <thread>

namespace pixelgrove {
namespace {

std::unique_ptr<ControlSet> WithSpeed() {
    auto controls = std::make_unique<ControlSet>();
    InitialiseSpeed(*controls);
    return controls;
}

TEST(LiveValues, FramesSeeWhatWasPublished) {
    auto controls = std::make_unique<ControlSet>();
    controls->uniforms[0].range.phase = 2.5f;
    InitialiseSpeed(*controls);
    EXPECT_EQ(controls->uniforms[0].range.phase, 2.5f);  // kept
    PublishControlValues(*controls);
    controls->uniforms[0].range.value = 0.5f;  // not published
    auto table = std::make_unique<UniformTable>();
    UpdateUniformValues(*table, 1000.0f);
    EXPECT_EQ(table->count, 1);
    EXPECT_EQ(table->values[0].name, QStringLiteral("Speed"));
    EXPECT_EQ(table->values[0].floatValue, 0.03f);
}

TEST(LiveValues, WholeFormsAreRoundedAndAlwaysDefined) {
    struct Row {
        float value;
        int32_t intValue;
        uint32_t uintValue;
    };
    const Row rows[] = {{0.5f, 1, 1},
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
    controls->uniforms[0].range.value = -INFINITY;
    PublishControlValues(*controls);
    UpdateUniformValues(*table, 0.0f);
    EXPECT_EQ(table->values[0].floatValue, -INFINITY);
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
}

}  // namespace
}  // namespace pixelgrove
