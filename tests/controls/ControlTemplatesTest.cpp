#include "controls/ControlTemplates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "controls/RangeState.h"
#include "controls/SliderTrack.h"

namespace pixelgrove {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

RangeControlState Range(float minimum, float maximum, bool isFloat = true) {
    RangeControlState range;
    InitialiseRange(range, true, isFloat, {}, minimum, maximum, minimum);
    return range;
}

TEST(ControlTemplates, PartsStandWhereTheirLettersAre) {
    using enum ControlPart;
    const ControlTemplate& modulated = RangeTemplate(true, 4);
    const ControlTemplate& fixed = RangeTemplate(false, 4);
    const ControlTemplate& list = ComboTemplate(4);
    const struct {
        const ControlTemplate* form;
        ControlPart part;
        QSize size;
        QRect place;
    } rows[] = {
        {&modulated, Name, {1140, 400}, {10, 0, 810, 100}},
        {&modulated, Combo, {1140, 400}, {450, 100, 370, 100}},
        {&modulated, Slider, {1140, 400}, {10, 200, 810, 100}},
        {&modulated, Minimum, {1140, 400}, {10, 300, 190, 100}},
        {&modulated, Low, {1140, 400}, {210, 300, 200, 100}},
        {&modulated, High, {1140, 400}, {420, 300, 200, 100}},
        {&modulated, Maximum, {1140, 400}, {630, 300, 190, 100}},
        {&modulated, Value, {1140, 400}, {260, 300, 310, 100}},  // the only one from the other set
        {&modulated, Preview, {1140, 400}, {830, 0, 310, 300}},
        {&modulated, Phase, {1140, 400}, {830, 300, 160, 100}},
        {&modulated, Frequency, {1140, 400}, {1000, 300, 140, 100}},
        {&modulated, Name, {371, 101}, {3, 0, 264, 25}},  // cut behind a half
        {&modulated, Value, {371, 101}, {85, 76, 101, 25}},
        {&fixed, Name, {830, 400}, {10, 0, 810, 100}},
        {&fixed, Value, {830, 400}, {260, 300, 310, 100}},
        {&fixed, Maximum, {830, 400}, {630, 300, 190, 100}},
        {&RangeTemplate(true, -3), Preview, {1140, 100}, {970, 0, 170, 100}},
        {&RangeTemplate(true, 2), Value, {1140, 200}, {320, 100, 140, 100}},
        {&RangeTemplate(true, 3), Frequency, {1140, 300}, {1000, 200, 140, 100}},
        {&RangeTemplate(false, 1), Value, {830, 100}, {740, 0, 80, 100}},
        {&RangeTemplate(false, 99), Slider, {830, 400}, {10, 200, 810, 100}},
        {&list, Combo, {330, 300}, {20, 100, 300, 100}},
        {&list, Randomize, {330, 300}, {20, 200, 300, 100}},
        {&ComboTemplate(2), Randomize, {330, 200}, {230, 100, 90, 100}},
        {&ComboTemplate(0), Randomize, {330, 100}, {250, 0, 70, 100}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(TemplatePlaces(*row.form, row.size).Place(row.part), row.place)
            << char(row.part) << " at line " << &row - rows;

    TemplatePlaces places(fixed, {830, 400});
    EXPECT_EQ(places.Place(Preview), QRect());
    const QRect slider = places.Place(Slider);
    EXPECT_EQ(places.Place(Preview), slider) << "goes on with the last box found";
    for (int count : {1, 2, 3, 4})
        for (const ControlTemplate* form :
             {&RangeTemplate(true, count), &RangeTemplate(false, count), &ComboTemplate(count)})
            for (const TemplateRows* set : {&form->set1, &form->set0})
                for (const std::string& row : *set)
                    EXPECT_EQ(row.size(), set->front().size()) << row;
}

TEST(SliderTrack, ThePointerFindsTheHandleThatIsSeenOrNear) {
    using enum SliderHandle;
    RangeControlState range = Range(0, 100);
    const struct {
        float low, high;
        bool two;
        QPoint point;
        SliderHandle handle;
    } rows[] = {
        {20, 80, true, {40, 5}, Low},        {20, 80, true, {160, 25}, High},
        {20, 80, true, {100, 15}, None},     {20, 80, true, {40 + 12, 15}, Low},
        {20, 80, true, {40 + 13, 15}, None}, {20, 80, true, {40, 29}, Low},  // below its box
        {50, 50, true, {100, 15}, High},                                     // both boxes are there
        {50, 50, true, {100, 5}, Low},       {50, 50, true, {100, 25}, High},
        {50, 50, true, {90, 5}, Low},        {50, 50, true, {90, 25}, High},
        {50, 55, true, {104, 5}, Low},  // not the high one's, though that is as near
        {0, 100, true, {0, 15}, Low},        {0, 100, true, {199, 15}, High},
        {0, 100, true, {-1, 15}, None},      {20, 80, false, {0, 15}, Value},
        {20, 80, false, {40, 5}, None},
    };
    for (const auto& row : rows) {
        range.low = row.low;
        range.high = row.high;
        EXPECT_EQ(HandleAt(range, row.two, {200, 30}, row.point), row.handle) << "row " << &row - rows;
    }
    EXPECT_EQ(HandleRect(range, Low, {200, 30}), QRect(34, 0, 12, 20));
    EXPECT_EQ(HandleRect(range, High, {200, 30}), QRect(154, 10, 12, 20));
}

TEST(SliderTrack, DragsAndStepsKeepToTheBounds) {
    const struct {
        float minimum, maximum;
        bool isFloat;
        double x;
        float dragged, step;
    } rows[] = {
        {0, 10, true, 50, 2.5f, 0.01f}, {0, 10, true, 999, 10, 0.01f},     {-1, 1, true, -999, -1, 0.002f},
        {0, 100, false, 50, 25, 1},     {0, 5000, false, 50, 1250, 5},     {0, 0, true, 50, 0, 0},
        {0, 0, false, 50, 0, 1},        {0, 5500, false, 100, 2750, 5.5f},
    };
    for (const auto& row : rows) {
        const RangeControlState range = Range(row.minimum, row.maximum, row.isFloat);
        EXPECT_FLOAT_EQ(DraggedValue(range, row.x, 200), row.dragged) << row.maximum;
        EXPECT_FLOAT_EQ(StepOf(range), row.step) << row.maximum;
    }
    RangeControlState range = Range(0, 10);
    EXPECT_FALSE(SetHandleValue(range, SliderHandle::Low, kNan));
    EXPECT_FALSE(SetHandleValue(range, SliderHandle::None, 3));
    EXPECT_TRUE(SetHandleValue(range, SliderHandle::Low, kInf));
    EXPECT_EQ(range.low, 10.0f);
    EXPECT_FALSE(SetHandleValue(range, SliderHandle::Low, 11));
    EXPECT_FALSE(SetHandleValue(range, SliderHandle::Value, DraggedValue(range, 0, 0)));

    for (const auto& [minimum, maximum] :
         {std::pair{1.0f, 1.0f}, {kNan, 1.0f}, {-kInf, kInf}, {0.0f, kInf}, {5.0f, -5.0f}}) {
        RangeControlState odd = Range(0, 1);
        odd.minimum = minimum;
        odd.maximum = maximum;
        for (float value : {0.0f, 1.0f, kNan, kInf, -kInf}) {
            const double fraction = TrackFraction(odd, value);
            EXPECT_TRUE(fraction >= 0 && fraction <= 1) << minimum << ' ' << value;
        }
    }
}

TEST(SliderTrack, ColoursMixInWholeNumbersByChannel) {
    EXPECT_EQ(MixedColour(0x50fa50, 0x5050fa, 0, 4), 0x50fa50u);
    EXPECT_EQ(MixedColour(0x50fa50, 0x5050fa, 1, 4), 0x50cf7au);
    EXPECT_EQ(MixedColour(0x50fa50, 0x5050fa, 4, 4), 0x5050fau);
    EXPECT_EQ(MixedColour(0x0000ff, 0xff0000, 5, 4), 0xff0000u);  // taken into a channel
    EXPECT_EQ(MixedColour(0x123456, 0xff0000, 1, 0), 0x123456u);
}

TEST(RangeState, TextsAreDecimalsOrCutWholeNumbers) {
    const struct {
        bool isFloat;
        float value;
        const char* text;
    } rows[] = {{true, 0.03f, "0.030"}, {true, -1.23456f, "-1.235"}, {true, kInf, "inf"}, {false, 3.99f, "3"},
                {false, -3.99f, "-3"},  {false, 3e9f, "3000000000"}, {false, kNan, "0"}};
    for (const auto& row : rows)
        EXPECT_EQ(RangeText(Range(0, 1, row.isFloat), row.value), QLatin1String(row.text));
    ASSERT_EQ(ModulationNames().size(), size_t(kModulationKinds));
    EXPECT_EQ(ModulationNames()[kModulationTriangle], u"Triangle Wave");
}

}  // namespace
}  // namespace pixelgrove
