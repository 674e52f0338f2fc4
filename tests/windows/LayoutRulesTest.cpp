#include "windows/LayoutRules.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <limits>
#include <random>

#include "windows/WindowsTestSupport.h"

namespace pixelgrove {
namespace {

WindowPlacement At(const EdgeRect& rect) {
    WindowPlacement placement;
    placement.length = WindowPlacement::kLength;
    placement.normal = rect;
    return placement;
}

WindowRecord Row(const char16_t* name, const EdgeRect& rect, bool open) {
    WindowRecord row;
    row.name = QString::fromUtf16(name);
    row.placement = At(rect);
    row.open = row.live = open;
    return row;
}

TEST(LayoutRules, DefaultPlaces) {
    const struct {
        const char* what;
        EdgeRect area;
        AreaFractions fractions;
        int border;
        EdgeRect rect;
    } rows[] = {
        {"right half below a panel", {0, 27, 1920, 1080}, {0.5, 0, 1, 1}, 0, {960, 27, 1920, 1080}},
        {"grown", {0, 27, 1920, 1080}, {0.5, 0, 1, 1}, 5, {955, 22, 1925, 1085}},
        // 0.5 of 1053 is 526.5, 0.7 of it 737.1.
        {"rounded", {0, 27, 1920, 1080}, {0, 0.5, 0.5, 0.7}, 0, {0, 554, 960, 764}},
        {"just not pulled", {0, 0, 1920, 1300}, {0, 0, 1, 1}, 0, {0, 0, 1920, 1300}},
        {"nor this", {0, 0, 2560, 1200}, {0, 0, 1, 1}, 0, {0, 0, 2560, 1200}},
        // 7 percent of 2560 is 179.2, of 1440 it is 100.8; 93 percent are 2380.8 and 1339.2.
        {"pulled", {100, 0, 2660, 1440}, {0, 0, 1, 1}, 0, {279, 101, 2481, 1339}},
        {"the middle stays", {0, 0, 2560, 1440}, {0.5, 0.5, 0.5, 0.5}, 0, {1280, 720, 1280, 720}},
    };
    for (const auto& row : rows) {
        const WindowPlacement placement = DefaultPlacement(row.area, row.fractions, row.border);
        EXPECT_EQ(placement.normal, row.rect) << row.what;
        EXPECT_TRUE(placement.IsValid() && placement.showCommand == 1);
    }
}

TEST(LayoutRules, SmallScreensHaveNoAudioWindow) {
    const EdgeRect area{0, 0, 1000, 1000};
    const WindowRows large = DefaultWindowRows(area, 1920 * 1080, 0);
    const WindowRows small = DefaultWindowRows(area, 1920 * 1080 - 1, 0);
    ASSERT_TRUE(large.size() == 4 && small.size() == 4);
    const EdgeRect edit{500, 0, 1000, 1000 - kDragRoom}, output{0, 0, 500, 500};
    for (const WindowRows* rows : {&large, &small}) {
        EXPECT_EQ((*rows)[0].placement.normal, edit);
        EXPECT_EQ((*rows)[1].placement.normal, output);
        EXPECT_EQ((*rows)[1].defaultPlacement, (*rows)[1].placement);
    }
    EXPECT_EQ(large[2].placement.normal, (EdgeRect{0, 500, 500, 700}));
    EXPECT_EQ(large[3].placement.normal, (EdgeRect{0, 700, 500, 1000}));
    EXPECT_TRUE(large[3].open);
    EXPECT_EQ(small[2].placement.normal, (EdgeRect{0, 500, 500, 1000}));
    EXPECT_FALSE(small[3].open || small[3].placement.IsValid());
}

TEST(LayoutRules, RecoversOnAnotherDesktop) {
    const EdgeRect area{0, 30, 1000, 530};
    // Together 2000 by 1000 from (-500, 0): halved in both axes. The closed one goes along, without counting.
    WindowRows rows{Row(kEditWin, {-500, 0, 501, 1000}, true), Row(kOutputWin, {501, 1, 1500, 500}, true),
                    Row(kAudioConfigWin, {-603, 2000, -500, 2011}, false), WindowRecord{}};
    RecoverRows(rows, area);
    EXPECT_EQ(rows[0].placement.normal, (EdgeRect{0, 30, 500, 530})) << "1001 wide: 500";
    EXPECT_EQ(rows[1].placement.normal, (EdgeRect{500, 30, 999, 279})) << "999 by 499 at 1001, 1";
    EXPECT_EQ(rows[2].placement.normal, (EdgeRect{-51, 1030, 0, 1035}));
    EXPECT_EQ(rows[3].placement.normal, EdgeRect{}) << "never placed";

    // Together 300 by 200 inside: centred at (500, 280), the closed one offset alike.
    rows = {Row(kEditWin, {0, 30, 100, 230}, true), Row(kOutputWin, {200, 30, 300, 130}, true),
            Row(kAudioConfigWin, {5000, 0, 5100, 100}, false)};
    RecoverRows(rows, area);
    EXPECT_EQ(rows[0].placement.normal, (EdgeRect{350, 180, 450, 380}));
    EXPECT_EQ(rows[1].placement.normal, (EdgeRect{550, 180, 650, 280}));
    EXPECT_EQ(rows[2].placement.normal, (EdgeRect{5350, 150, 5450, 250}));

    constexpr int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    rows = {Row(kEditWin, {least, least, most, most}, true)};
    RecoverRows(rows, area);
    EXPECT_EQ(rows[0].placement.normal, area);
    rows[0].placement.normal = {7, 7, 7, 9};
    RecoverRows(rows, area);
    EXPECT_EQ(rows[0].placement.normal, (EdgeRect{7, 7, 7, 9})) << "nothing open has an area";
}

TEST(LayoutRules, AStoredPlaceComesIntoSight) {
    // Two monitors, a panel above the left one.
    const std::vector<EdgeRect> areas{{0, 30, 1600, 900}, {1600, 0, 2600, 800}};
    const QSize smallest(200, 100);
    const struct {
        const char* what;
        EdgeRect stored, shown;
    } rows[] = {
        {"partly outside", {-300, 700, 500, 1100}, {-300, 700, 500, 1100}},
        {"across both", {1000, 100, 2400, 700}, {1000, 100, 2400, 700}},
        {"twice as large, as a picture may be", {0, 40, 3200, 1600}, {0, 40, 3200, 1600}},
        {"caption below the panel", {100, 0, 900, 500}, {100, 30, 900, 530}},
        {"nothing but buttons", {-700, 100, 100, 400}, {0, 100, 800, 400}},
        {"left of all", {-5000, 100, -4000, 400}, {0, 100, 1000, 400}},
        {"in the corner that no monitor has", {2500, 850, 2900, 1200}, {2200, 450, 2600, 800}},
        {"huge", {-90000, -90000, 90000, 90000}, {0, 30, 1600, 900}},
        {"too small", {1700, 100, 1710, 90}, {1700, 100, 1900, 200}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(BroughtIntoSight(row.stored, smallest, areas), row.shown) << row.what;
    EXPECT_EQ(BroughtIntoSight(rows[0].stored, smallest, {}), rows[0].stored);
}

// Placements as files may hold them after an accident: some bytes of good ones are others now.
TEST(LayoutRules, NoMutatedSettingHidesAWindow) {
    const std::vector<EdgeRect> areas{{0, 0, 1600, 1000}};
    std::mt19937 random(20);
    const auto below = [&random](size_t count) { return random() % count; };
    int lost = 0;
    for (int turn = 0; turn < 3000; ++turn) {
        for (const WindowRecord& row : DefaultWindowRows(areas[0], kLargeScreenPixels, 0)) {
            auto bytes = std::bit_cast<std::array<uint8_t, sizeof(EdgeRect)>>(row.placement.normal);
            for (size_t i = below(4); i < 4; ++i)
                bytes[below(bytes.size())] = uint8_t(random());
            const auto stored = std::bit_cast<EdgeRect>(bytes);
            const EdgeRect shown = BroughtIntoSight(stored, {390, 300}, areas);
            lost += !IsInSight(stored, areas);
            ASSERT_TRUE(IsInSight(shown, areas)) << turn << ": " << testing::PrintToString(stored);
            ASSERT_TRUE(shown.Width() >= 390 && shown.Width() <= 3200);
            ASSERT_TRUE(shown.Height() >= 300 && shown.Height() <= 2000);
        }
    }
    EXPECT_GT(lost, 3000) << "that many of 12000 were out of sight";
    RecordProperty("lost", lost);
}

TEST(WindowRows, NamesAreLookedUpOrAdded) {
    WindowRows rows = DefaultWindowRows({0, 0, 1000, 1000}, 1, 0);
    EXPECT_EQ(FindOrAddWindowRow(rows, kShadertoyWin), &rows[2]);
    EXPECT_EQ(FindWindowRow(rows, kControlCreatorDlg), nullptr);
    const WindowRecord* added = FindOrAddWindowRow(rows, kControlCreatorDlg);
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_TRUE(added == &rows[4] && added->name == kControlCreatorDlg);
    EXPECT_EQ(FindOrAddWindowRow(rows, u""), nullptr);
    EXPECT_EQ(FindOrAddWindowRow(rows, QString(64, u'x')), nullptr);
    EXPECT_NE(FindOrAddWindowRow(rows, QString(63, u'x')), nullptr);
    for (int i = 0; i < 100; ++i)
        FindOrAddWindowRow(rows, QString::number(i));
    EXPECT_EQ(rows.size(), kMaxWindowRows);
}

TEST(LayoutRules, WhatToDoWithEachWindow) {
    const WindowRecord placed = Row(kOutputWin, {0, 0, 9, 9}, true), closed = Row(kOutputWin, {}, false);
    WindowRecord unplaced = placed;
    unplaced.placement.length = 43;
    EXPECT_EQ(ActionToApply(placed, false), LayoutAction::Open);
    EXPECT_EQ(ActionToApply(placed, true), LayoutAction::Place);
    EXPECT_EQ(ActionToApply(unplaced, true), LayoutAction::Show);
    EXPECT_EQ(ActionToApply(closed, true), LayoutAction::Close);
    EXPECT_EQ(ActionToApply(closed, false), LayoutAction::Nothing);
}

}  // namespace
}  // namespace pixelgrove
