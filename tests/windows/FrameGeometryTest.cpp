#include "windows/FrameGeometry.h"

#include <gtest/gtest.h>

#include "windows/WindowsTestSupport.h"

namespace pixelgrove {
namespace {

using enum FrameZone;

const FrameShape kFrame{{400, 300}, 24, true};

TEST(FrameGeometry, ZonesOfPoints) {
    EXPECT_EQ(ClientRect(kFrame), (EdgeRect{5, 24, 395, 295}));
    // The corners' area begins at 24 - 5 = 19, so the upper ones end before 35; the lower begin at 285.
    const struct {
        QPoint point;
        FrameZone zone;
    } rows[] = {
        {{5, 24}, Client},     {{394, 294}, Client},      {{200, 23}, Caption},    {{200, 5}, Caption},
        {{200, 4}, Top},       {{15, 0}, TopLeft},        {{16, 0}, Top},          {{384, 0}, Top},
        {{385, 0}, TopRight},  {{4, 12}, TopLeft},        {{4, 34}, TopLeft},      {{4, 35}, Left},
        {{4, 284}, Left},      {{4, 285}, BottomLeft},    {{395, 34}, TopRight},   {{395, 35}, Right},
        {{394, 150}, Client},  {{399, 285}, BottomRight}, {{15, 295}, BottomLeft}, {{16, 295}, Bottom},
        {{384, 299}, Bottom},  {{385, 299}, BottomRight}, {{-1, 100}, Outside},    {{400, 100}, Outside},
        {{200, 300}, Outside},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ZoneAt(kFrame, row.point), row.zone) << row.point.x() << ", " << row.point.y();

    const FrameShape maximised{{400, 300}, 24, false};
    EXPECT_EQ(ClientRect(maximised), (EdgeRect{0, 24, 400, 300}));
    EXPECT_EQ(ZoneAt(maximised, {0, 0}), Caption);
    EXPECT_EQ(ZoneAt(maximised, {399, 299}), Client);
    EXPECT_TRUE(GripParts(maximised).empty());
}

TEST(FrameGeometry, DragsTheNamedSides) {
    const EdgeRect start{100, 100, 300, 250};
    const struct {
        FrameZone zone;
        QPoint way;
        EdgeRect rect;
    } rows[] = {
        {Caption, {-150, 7}, {-50, 107, 150, 257}},    {Left, {-10, 99}, {90, 100, 300, 250}},
        {Left, {190, 0}, {220, 100, 300, 250}},        {Right, {-190, 0}, {100, 100, 180, 250}},
        {TopLeft, {10, 120}, {110, 190, 300, 250}},    {TopRight, {10, -20}, {100, 80, 310, 250}},
        {BottomLeft, {5, -120}, {105, 100, 300, 160}}, {BottomRight, {1, 2}, {100, 100, 301, 252}},
        {Top, {50, 10}, {100, 110, 300, 250}},         {Bottom, {50, 10}, {100, 100, 300, 260}},
        {Client, {50, 10}, {100, 100, 300, 250}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DragRect(start, row.zone, row.way, {80, 60}), row.rect) << int(row.zone);
}

TEST(FrameGeometry, GripsLieNearTheLowerCorners) {
    const std::vector<GripPart> parts = GripParts(kFrame);
    ASSERT_EQ(parts.size(), 12u);
    EXPECT_EQ(parts[0].rect, (EdgeRect{0, 282, 6, 283}));
    EXPECT_EQ(parts[1].rect, (EdgeRect{0, 283, 6, 287}));
    EXPECT_EQ(parts[5].rect, (EdgeRect{394, 287, 400, 288}));
    EXPECT_EQ(parts[6].rect, (EdgeRect{12, 294, 13, 300}));
    EXPECT_EQ(parts[10].rect, (EdgeRect{383, 294, 387, 300}));
    EXPECT_TRUE(parts[0].outline && !parts[1].outline && parts[2].outline);
}

}  // namespace
}  // namespace pixelgrove
