#include "windows/Snapping.h"

#include <gtest/gtest.h>

#include <limits>

#include "windows/WindowsTestSupport.h"

namespace pixelgrove {
namespace {

TEST(Snapping, OppositeEdgesBelowTheDistance) {
    // The other window: 1000..1400 by 500..800. The dragged one: 200 by 100.
    const EdgeRect other{1000, 500, 1400, 800};
    const struct {
        const char* what;
        int x, y;
        int snappedX, snappedY;
    } rows[] = {
        {"left edge to its right one, 11 away", 1411, 600, 1400, 600},
        {"12 away", 1412, 600, 1412, 600},
        {"11 inside", 1389, 600, 1400, 600},
        {"12 inside", 1388, 600, 1388, 600},
        {"right edge to its left one", 811, 600, 800, 600},
        {"12 away on that side", 788, 600, 788, 600},
        {"top to its bottom", 1100, 811, 1100, 800},
        {"12 below", 1100, 812, 1100, 812},
        {"bottom to its top", 1100, 389, 1100, 400},
        {"12 above", 1100, 388, 1100, 388},
        {"side by side no longer: one row below", 1405, 800, 1405, 800},
        {"above by one row", 1405, 400, 1405, 400},
        {"beside by one row", 1405, 401, 1400, 401},
        {"aligned left edges don't attract", 1005, 900, 1005, 900},
        // Snapped to the right edge it no longer lies below, so the bottom doesn't attract any more.
        {"at the corner", 1395, 795, 1400, 795},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SnapRect({row.x, row.y, row.x + 200, row.y + 100}, {&other, 1}),
                  (EdgeRect{row.snappedX, row.snappedY, row.snappedX + 200, row.snappedY + 100}))
            << row.what;
}

TEST(Snapping, LaterWindowsOverrideAndTheListIsCut) {
    // To the first one's right edge at 300, which brings the right edge to 500, 5 from the second one's left.
    const EdgeRect first{100, 0, 300, 400}, second{505, 0, 700, 400};
    const EdgeRect both[] = {first, second}, turned[] = {second, first};
    EXPECT_EQ(SnapRect({304, 50, 504, 150}, both), (EdgeRect{305, 50, 505, 150}));
    EXPECT_EQ(SnapRect({304, 50, 504, 150}, turned), (EdgeRect{300, 50, 500, 150}));

    std::vector<EdgeRect> many(kMaxSnapWindows, EdgeRect{9000, 9000, 9001, 9001});
    many.push_back(first);
    EXPECT_EQ(SnapRect({304, 50, 504, 150}, many), (EdgeRect{304, 50, 504, 150}));
    many.erase(many.begin());
    EXPECT_EQ(SnapRect({304, 50, 504, 150}, many), (EdgeRect{300, 50, 500, 150}));
}

TEST(Snapping, EverySecondStepWhileActive) {
    const EdgeRect other{0, 0, 100, 100}, proposed{105, 10, 205, 60};
    SnapState state;
    EXPECT_EQ(SnapMoveStep(state, proposed, {&other, 1}), std::nullopt);
    state.active = true;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SnapMoveStep(state, proposed, {&other, 1}), std::nullopt);
        EXPECT_EQ(SnapMoveStep(state, proposed, {&other, 1}), (EdgeRect{100, 10, 200, 60}));
    }
}

TEST(Snapping, ExtremeNumbersSaturate) {
    constexpr int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    const EdgeRect all{least, least, most, most};
    EXPECT_EQ(SnapRect(all, {&all, 1}), all);
    EXPECT_EQ(Offset(all, 10, -10), (EdgeRect{least + 10, least, most, most - 10}));
    EXPECT_EQ(FromQRect(ToQRect({-5, 3, 20, 40})), (EdgeRect{-5, 3, 20, 40}));
}

}  // namespace
}  // namespace pixelgrove
