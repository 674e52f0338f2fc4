#include "windows/GroupMoves.h"

#include <gtest/gtest.h>

#include "windows/WindowsTestSupport.h"

namespace pixelgrove {
namespace {

WindowRecord Window(const EdgeRect& rect, bool open = true, bool live = true) {
    WindowRecord row;
    row.placement.length = WindowPlacement::kLength;
    row.placement.normal = rect;
    row.open = open;
    row.live = live;
    row.window = open ? WindowPresence::Present : WindowPresence::None;
    return row;
}

TEST(GroupMoves, GroupFollowsTheDraggedWindow) {
    const EdgeRect group{0, 0, 1000, 800}, before{100, 200, 300, 300};
    const struct {
        const char* what;
        EdgeRect after;
        EdgeRect group;
    } rows[] = {
        {"moved", {90, 207, 290, 307}, {-10, 7, 990, 807}},
        // Factors 2 and 1 about (100, 200): left 100 - 100 * 2, right 100 + 900 * 2.
        {"top left stayed, wider", {100, 200, 500, 300}, {-100, 0, 1900, 800}},
        // Factors 0.5 and 1.5 about (300, 200).
        {"top right stayed", {200, 200, 300, 350}, {150, -100, 650, 1100}},
        // Factors 1.5 and 2 about (100, 300).
        {"bottom left stayed", {100, 100, 400, 300}, {-50, -300, 1450, 1300}},
        // Factors 2 and 0.5 about (300, 300).
        {"bottom right stayed", {-100, 250, 300, 300}, {-300, 150, 1700, 550}},
        // Factors 2 and 2 about the middle of the left edge, (100, 250).
        {"left edge stayed", {100, 150, 500, 350}, {-100, -250, 1900, 1350}},
        // Factors 0.5 and 3 about the middle of the bottom edge, (200, 300).
        {"bottom edge stayed", {150, 0, 250, 300}, {100, -600, 600, 1800}},
        // Factors 2 and 3, (100, 200) to (0, 100).
        {"nothing stayed", {0, 100, 400, 400}, {-200, -500, 1800, 1900}},
        // Factor 1.005: 100 - 100.5 is -0.5, 100 + 904.5 is 1004.5.
        {"halves go away from zero", {100, 200, 301, 300}, {-1, 0, 1005, 800}},
        {"no extent left", {100, 200, 100, 300}, {0, 0, 1000, 800}},
        {"turned inside out", {100, 200, 300, 150}, {0, 0, 1000, 800}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ChangedGroup(group, before, row.after), row.group) << row.what;
    EXPECT_EQ(ChangedGroup(group, {100, 200, 100, 300}, {100, 200, 150, 400}),
              (EdgeRect{0, -200, 1000, 1400}))
        << "no width before: factor 1";
}

TEST(GroupMoves, WindowsKeepTheirPartOfTheGroup) {
    EXPECT_EQ(MapRect({100, 200, 300, 300}, {0, 0, 1000, 800}, {-100, 0, 1900, 800}),
              (EdgeRect{100, 200, 500, 300}));
    // A third of 100 is 33.3, two thirds of it 66.7.
    EXPECT_EQ(MapRect({1, 2, 2, 3}, {0, 0, 3, 3}, {0, -100, 100, 0}), (EdgeRect{33, -33, 67, 0}));
    EXPECT_EQ(MapRect({5, 5, 9, 9}, {5, 5, 5, 5}, {7, 8, 100, 100}), (EdgeRect{7, 8, 11, 12}));
}

TEST(GroupMoves, ShiftInvertsTheLockAndTurnsSnappingOff) {
    const WindowRows rows{Window({0, 0, 100, 100}), Window({100, 0, 300, 100}),
                          Window({900, 900, 950, 950}, false), Window({300, 0, 400, 100}, true, false)};
    const struct {
        bool lock, shift, group, snap;
    } cases[] = {{false, false, false, true},
                 {true, false, true, false},
                 {false, true, true, false},
                 {true, true, false, false}};
    for (const auto& c : cases) {
        SnapState snap;
        snap.active = true;
        WindowDrag drag = BeginDrag(rows, snap, c.lock, c.shift);
        EXPECT_EQ(snap.active, c.snap);
        EXPECT_EQ(drag.group, (EdgeRect{0, 0, 400, 100})) << "closed windows don't count";

        const auto moves = ProposeGroupMove(rows, drag, 0, {0, 0, 200, 100}, c.lock, c.shift);
        ASSERT_EQ(moves.size(), c.group ? 2u : 0u) << "the fourth isn't live yet";
        if (c.group) {
            EXPECT_EQ(moves[0].rect, (EdgeRect{0, 0, 200, 100}));
            EXPECT_EQ(moves[1].row, 1u);
            EXPECT_EQ(moves[1].rect, (EdgeRect{200, 0, 600, 100}));
        }
        for (const RowMove& move : ProposeGroupMove(rows, drag, 0, {0, 0, 100, 100}, c.lock, c.shift))
            EXPECT_EQ(move.rect, rows[move.row].placement.normal) << "dragged back to where it was";
        EXPECT_TRUE(ProposeGroupMove(rows, drag, 4, {0, 0, 1, 1}, c.lock, c.shift).empty()) << "no such row";
        EndDrag(drag, snap);
        EXPECT_TRUE(snap.active);
        EXPECT_TRUE(ProposeGroupMove(rows, drag, 0, {0, 0, 200, 100}, c.lock, c.shift).empty()) << "no drag";
    }
}

TEST(GroupMoves, AlignsEqualEdgesAtMostTheDistanceApart) {
    // Left edges 12 apart, right ones 13, tops 3 (mean 101.5), bottoms far.
    WindowRows rows{Window({100, 100, 500, 300}), Window({112, 103, 513, 900})};
    AlignEdges(rows);
    EXPECT_EQ(rows[0].placement.normal, (EdgeRect{106, 101, 500, 300}));
    EXPECT_EQ(rows[1].placement.normal, (EdgeRect{106, 101, 513, 900}));

    // Touching edges are none of its business. A window that isn't live takes part as the other one; closed
    // ones, those that were never placed, and two that aren't live don't.
    rows = {Window({0, 0, 100, 100}), Window({105, 200, 300, 300})};
    AlignEdges(rows);
    EXPECT_EQ(rows[1].placement.normal, (EdgeRect{105, 200, 300, 300}));
    rows = {Window({-4, 4, 700, 100}), Window({-7, 400, 300, 500}, true, false),
            Window({-8, 404, 304, 504}, false), WindowRecord{}};
    AlignEdges(rows);
    EXPECT_EQ(rows[0].placement.normal, (EdgeRect{-5, 4, 700, 100}));
    EXPECT_EQ(rows[1].placement.normal, (EdgeRect{-5, 400, 300, 500}));
    rows[1].placement.normal.left = -9;
    rows[0].live = false;
    AlignEdges(rows);
    EXPECT_EQ(rows[0].placement.normal.left, -5);
}

}  // namespace
}  // namespace pixelgrove
