#include "controls/Annotations.h"
#include "controls/BakedText.h"
#include "controls/LiveValues.h"

#include <gtest/gtest.h>

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

TEST(LiveValues, ABakedTextIsLinesInTheCodePage) {
    EXPECT_EQ(PlainStageText(QStringLiteral(u"a\r//\u20ac\u4e2d\nb")), "a\n//\x80?\nb");
}

}  // namespace
}  // namespace pixelgrove
