#include "windows/PanelStruts.h"

#include <gtest/gtest.h>

#include <vector>

#include "windows/WindowsTestSupport.h"

namespace pixelgrove {
namespace {

TEST(PanelStruts, EachMonitorLosesItsOwnPanelsOnly) {
    const EdgeRect whole{0, 0, 3000, 1000}, left{0, 0, 1600, 900}, right{1600, 100, 3000, 1000};
    const PanelStrut aboveLeft{0, 0, 30, 0, 0, 0, 0, 0, 0, 1599, 0, 0};
    const PanelStrut belowRight{0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 1600, 2999};
    const PanelStrut atRight{0, 50, 0, 0, 0, 0, 0, 999, 0, 0, 0, 0};
    // Its strip begins at the left edge of the screen, across the other monitor.
    const PanelStrut betweenBoth{1660, 0, 0, 0, 0, 999, 0, 0, 0, 0, 0, 0};
    const PanelStrut belowLeft{0, 0, 0, 140, 0, 0, 0, 0, 0, 0, 0, 1599};  // 100 of it are no monitor
    const struct {
        std::vector<PanelStrut> struts;
        EdgeRect leftArea, rightArea;
    } rows[] = {
        {{}, left, right},
        {{aboveLeft, belowRight}, {0, 30, 1600, 900}, {1600, 100, 3000, 960}},
        {{aboveLeft, atRight, belowLeft}, {0, 30, 1600, 860}, {1600, 100, 2950, 1000}},
        {{betweenBoth}, left, {1660, 100, 3000, 1000}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(AreaBesidePanels(left, whole, row.struts), row.leftArea);
        EXPECT_EQ(AreaBesidePanels(right, whole, row.struts), row.rightArea);
    }
    const std::vector<EdgeRect> areas{{1600, 100, 3000, 970}, {0, 25, 1600, 900}};
    EXPECT_EQ(AreaOnMonitor(left, areas), areas[1]);
    EXPECT_EQ(AreaOnMonitor(right, areas), areas[0]);
    EXPECT_EQ(AreaOnMonitor({5000, 0, 6000, 900}, areas), (EdgeRect{5000, 0, 6000, 900}));
}

}  // namespace
}  // namespace pixelgrove
