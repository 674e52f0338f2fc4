// The registry with real windows on the display: drags, groups, layouts.
#include "windows/widgets/WindowRegistry.h"

#include <QDir>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <map>

#include "commands/CommandRegistry.h"
#include "support/DisplayTest.h"
#include "windows/LayoutRules.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/WindowTable.h"

namespace pixelgrove {
namespace {

QString Name(const char16_t* name) {
    return QString::fromUtf16(name);
}

class RegistryTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (App()) Windows().RegisterDefaultWindows();
    }
    void TearDown() override {
        if (!App()) return;
        windows.clear();
        Windows().Clear();
        DisplayTest::TearDown();
    }

    FrameWindow& Show(const char16_t* name, const EdgeRect& rect) {
        auto& window = windows[Name(name)];
        window = std::make_unique<FrameWindow>();
        Row(name).placement = {WindowPlacement::kLength, 0, 1, -1, -1, -1, -1, rect};
        Windows().Present(*window, name);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        EXPECT_EQ(window->FrameRect(), rect);
        return *window;
    }
    WindowRecord& Row(const char16_t* name) { return *FindOrAddWindowRow(Windows().Layout().windows, name); }
    EdgeRect Rect(const char16_t* name) { return windows.at(Name(name))->FrameRect(); }
    // One drag with a proposal for each rectangle.
    void Drag(FrameWindow& window, FrameZone zone, const std::vector<EdgeRect>& proposals,
              bool shift = false) {
        Windows().BeginDrag(window, shift);
        for (const EdgeRect& proposal : proposals)
            Windows().DragTo(window, zone, proposal, shift);
        Windows().EndDrag(window);
        WaitSettled();
    }
    // The names of the windows that it asks to open.
    static QStringList ApplyLayout() {
        QStringList names, opened;
        for (const char16_t* name : {kEditWin, kOutputWin, kShadertoyWin, kAudioConfigWin})
            names += Name(name);
        Windows().ApplyLayout(names, [&opened](const QString& name) { opened += name; });
        return opened;
    }
    void WaitSettled() {
        for (const auto& [name, window] : windows)
            EXPECT_TRUE(PumpUntil([&] { return window->IsSettled(); })) << qPrintable(name);
    }

    std::map<QString, std::unique_ptr<FrameWindow>> windows;
    QTemporaryDir folder;
};

TEST_F(RegistryTest, ACaptionDragSnapsBelowTwelvePixels) {
    Show(kOutputWin, {100, 100, 500, 400});
    FrameWindow& other = Show(kShadertoyWin, {600, 150, 900, 350});
    Windows().SetSnapping(true);
    // The second step is the one that counts.
    const EdgeRect at11{511, 150, 811, 350}, at12{512, 150, 812, 350};
    Windows().BeginDrag(other, false);
    for (const auto& [proposal, expected] :
         {std::pair(at11, at11), std::pair(at11, EdgeRect{500, 150, 800, 350}), std::pair(at12, at12),
          std::pair(at12, at12)}) {
        Windows().DragTo(other, FrameZone::Caption, proposal, false);
        EXPECT_EQ(other.FrameRect(), expected);
    }
    // Sizing doesn't snap, nor does a hidden window attract.
    Windows().DragTo(other, FrameZone::Left, at11, false);
    Windows().DragTo(other, FrameZone::Left, at11, false);
    EXPECT_EQ(other.FrameRect(), at11);
    windows.at(Name(kOutputWin))->hide();
    Windows().DragTo(other, FrameZone::Caption, at11, false);
    Windows().DragTo(other, FrameZone::Caption, at11, false);
    EXPECT_EQ(other.FrameRect(), at11);
    Windows().EndDrag(other);
    // A drag that ends on a step that doesn't count is flush all the same. Reports of the steps above are
    // still under way; none is of this height.
    windows.at(Name(kOutputWin))->show();
    Drag(other, FrameZone::Caption, {{511, 170, 811, 370}});
    EXPECT_EQ(other.FrameRect(), (EdgeRect{500, 170, 800, 370}));
}

TEST_F(RegistryTest, WhereTheManagerLeadsTheOthersFollow) {
    FrameWindow& first = Show(kEditWin, {100, 100, 500, 500});
    FrameWindow& other = Show(kOutputWin, {600, 100, 900, 300});
    const struct {
        bool snap, lock;
        FrameZone zone;
        bool plain;
    } cases[] = {{false, false, FrameZone::Caption, true},
                 {true, false, FrameZone::Caption, false},
                 {true, false, FrameZone::Left, true},
                 {false, true, FrameZone::Left, false}};
    for (const auto& c : cases) {
        Windows().SetSnapping(c.snap);
        Windows().SetLockWindows(c.lock);
        EXPECT_EQ(Windows().IsPlainDrag(first, c.zone, false), c.plain);
        EXPECT_EQ(Windows().IsPlainDrag(first, c.zone, true),
                  c.lock && (c.zone != FrameZone::Caption || !c.snap));
    }
    Windows().SetLockWindows(true);
    const auto lead = [this](FrameWindow& window, const EdgeRect& to) {
        Windows().BeginDrag(window, false);
        Windows().LeaveDragToManager(window, FrameZone::Caption);
        window.SetFrameRect(to);
        WaitSettled();
        Windows().EndDrag(window);
        WaitSettled();
    };
    lead(first, {120, 130, 520, 530});
    EXPECT_EQ(other.FrameRect(), (EdgeRect{620, 130, 920, 330}));
    Windows().SetLockWindows(false);
    Windows().SetSnapping(true);
    lead(first, {211, 230, 611, 630});
    EXPECT_EQ(first.FrameRect(), (EdgeRect{220, 230, 620, 630})) << "snapped at the end";
}

TEST_F(RegistryTest, EdgesAreAlignedAfterADragWithSnapping) {
    Show(kOutputWin, {100, 100, 500, 300});
    FrameWindow& other = Show(kShadertoyWin, {700, 500, 900, 700});
    for (const bool snapping : {false, true}) {
        Windows().SetSnapping(snapping);
        Drag(other, FrameZone::Caption, {{108, 500, 308, 700}});
        EXPECT_EQ(Rect(kShadertoyWin), (EdgeRect{snapping ? 104 : 108, 500, 308, 700}));
        EXPECT_EQ(Rect(kOutputWin), (EdgeRect{snapping ? 104 : 100, 100, 500, 300}));
    }
    // When the button comes up, a report of a place that was only passed may stand for the window's.
    Windows().BeginDrag(other, false);
    Windows().DragTo(other, FrameZone::Right, {104, 500, 400, 700}, false);
    other.SetFrameRect({104, 500, 350, 700});
    Windows().EndDrag(other);
    WaitSettled();
    EXPECT_EQ(Rect(kShadertoyWin), (EdgeRect{104, 500, 400, 700}));
}

TEST_F(RegistryTest, WindowsMoveAndSizeAsAGroup) {
    FrameWindow& first = Show(kEditWin, {100, 100, 500, 500});
    Show(kOutputWin, {500, 100, 900, 300});
    Show(kShadertoyWin, {500, 300, 900, 500});
    // Locked, or unlocked with Shift, all go; both together, one.
    Windows().SetLockWindows(true);
    Drag(first, FrameZone::Caption, {{110, 110, 510, 510}, {150, 130, 550, 530}});
    EXPECT_EQ(Rect(kEditWin), (EdgeRect{150, 130, 550, 530}));
    EXPECT_EQ(Rect(kOutputWin), (EdgeRect{550, 130, 950, 330}));
    EXPECT_EQ(Rect(kShadertoyWin), (EdgeRect{550, 330, 950, 530}));
    Drag(first, FrameZone::Caption, {{100, 100, 500, 500}}, true);
    EXPECT_EQ(Rect(kEditWin), (EdgeRect{100, 100, 500, 500}));
    EXPECT_EQ(Rect(kOutputWin), (EdgeRect{550, 130, 950, 330}));
    Windows().SetLockWindows(false);
    Drag(first, FrameZone::Caption, {{150, 130, 550, 530}});
    Drag(first, FrameZone::Caption, {{160, 140, 560, 540}, {150, 130, 550, 530}}, true);
    EXPECT_EQ(Rect(kOutputWin), (EdgeRect{550, 130, 950, 330})) << "dragged there and back";

    // Twice as wide and half again as high, about the top left corner of the window and with it the group's.
    Drag(first, FrameZone::BottomRight, {{150, 130, 950, 730}}, true);
    EXPECT_EQ(Rect(kEditWin), (EdgeRect{150, 130, 950, 730}));
    EXPECT_EQ(Rect(kOutputWin), (EdgeRect{950, 130, 1750, 430}));
    EXPECT_EQ(Rect(kShadertoyWin), (EdgeRect{950, 430, 1750, 730}));
}

TEST_F(RegistryTest, ALayoutFileBringsEveryWindowBack) {
    Show(kEditWin, {300, 50, 900, 700});
    Show(kOutputWin, {10, 20, 290, 300});
    Show(kShadertoyWin, {10, 310, 290, 600});
    const QString path = folder.filePath(QStringLiteral("three.STL"));
    ASSERT_TRUE(Windows().SaveLayoutFile(path));

    windows.at(Name(kEditWin))->SetFrameRect({0, 0, 500, 500});
    windows.at(Name(kOutputWin))->SetMaximised(true);
    ASSERT_TRUE(PumpUntil([this] { return windows.at(Name(kOutputWin))->IsMaximised(); }));
    windows.at(Name(kShadertoyWin))->close();
    PumpFor(30);
    EXPECT_FALSE(Row(kShadertoyWin).open);
    Windows().SetLockWindows(true);

    ASSERT_TRUE(Windows().LoadLayoutFile(path));
    const QStringList opened = ApplyLayout();
    EXPECT_TRUE(PumpUntil([this] { return Rect(kOutputWin) == EdgeRect{10, 20, 290, 300}; }));
    EXPECT_EQ(Rect(kEditWin), (EdgeRect{300, 50, 900, 700}));
    EXPECT_TRUE(Windows().LockWindows()) << "a file doesn't change that";
    EXPECT_TRUE(windows.at(Name(kShadertoyWin))->isVisible()) << "hidden by its close, not destroyed";
    EXPECT_EQ(opened, QStringList{Name(kAudioConfigWin)}) << "open by default";
    // They are followed again.
    windows.at(Name(kEditWin))->SetFrameRect({310, 60, 910, 710});
    PumpFor(30);
    EXPECT_EQ(Row(kEditWin).placement.normal, (EdgeRect{310, 60, 910, 710}));

    // No layout file at all changes nothing.
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\x01\x00\xff junk", 9), QByteArray("<a>\n<DTRect>")}) {
        const QString junk = folder.filePath(QStringLiteral("junk.STL"));
        QFile file(junk);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        EXPECT_FALSE(Windows().LoadLayoutFile(junk));
        EXPECT_EQ(Row(kEditWin).placement.normal, (EdgeRect{310, 60, 910, 710}));
    }
}

TEST_F(RegistryTest, ALayoutOfALargerDesktopLeavesNoWindowOutside) {
    Show(kEditWin, {300, 50, 900, 700});
    Show(kOutputWin, {10, 20, 290, 300});
    const EdgeRect area = CurrentWorkArea();
    WindowLayout& layout = Windows().Layout();
    WindowLayout large = layout;
    large.desktop = {0, 0, area.right * 2, area.bottom * 2};
    large.windows = {layout.windows[0], layout.windows[1]};
    large.windows[0].placement.normal = {area.right, 0, area.right * 2, area.bottom * 2};
    large.windows[1].placement.normal = {0, 0, area.right, area.bottom};
    const std::unique_ptr<XmlStore> store = XmlCreate();
    const QString path = folder.filePath(QStringLiteral("large.STL"));
    ASSERT_TRUE(SaveLayout(*store, large) && XmlSave(*store, path));
    ASSERT_TRUE(Windows().LoadLayoutFile(path));
    ApplyLayout();
    PumpFor(30);
    EXPECT_EQ(Rect(kEditWin), (EdgeRect{area.right / 2, 0, area.right, area.bottom - kDragRoom}));
    EXPECT_EQ(Rect(kOutputWin), (EdgeRect{0, 0, area.right / 2, area.bottom / 2}));
}

TEST_F(RegistryTest, AbsurdPlacesInAFileAreNoHarm) {
    const EdgeRect absurd[] = {
        {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, {5, 5, -9, -9}, {-9000, 7000, -8000, 7500}};
    const std::vector<EdgeRect> areas{CurrentWorkArea()};
    for (const EdgeRect& rect : absurd) {
        FrameWindow window;
        Row(kOutputWin).placement = {WindowPlacement::kLength, 0, 1, -1, -1, -1, -1, rect};
        Windows().Present(window, kOutputWin);
        PumpFor(30);
        EXPECT_TRUE(IsInSight(window.FrameRect(), areas));
        EXPECT_LE(window.FrameRect().Width(), 2 * CurrentDesktop()->Width());
        Row(kOutputWin).placement.normal = rect;
        ApplyLayout();
        EXPECT_TRUE(IsInSight(window.FrameRect(), areas));
    }
}

// The layouts that come with the program, on the screens that people have: everything can be read.
TEST(LayoutFiles, FitEveryScreen) {
    const QDir folder(QStringLiteral(PIXELGROVE_SOURCE_DIR "/data/UI"));
    const QStringList files = folder.entryList({QStringLiteral("*.STL")});
    ASSERT_EQ(files.size(), 3);
    for (const QString& file : files) {
        for (const QSize& screen :
             {QSize(1366, 768), QSize(1600, 1000), QSize(1920, 1080), QSize(2560, 1440)}) {
            SCOPED_TRACE(file.toStdString() + " at " + std::to_string(screen.width()));
            const EdgeRect area{0, 28, screen.width(), screen.height()};
            const std::unique_ptr<XmlStore> store = XmlLoad(folder.filePath(file));
            ASSERT_TRUE(store);
            WindowLayout layout;
            LoadLayout(*store, layout);
            ASSERT_NE(layout.desktop, (EdgeRect{0, 0, screen.width(), screen.height()}));
            RecoverRows(layout.windows, area);
            LeaveRoomToDrag(layout.windows, area);
            const EdgeRect edit = FindWindowRow(layout.windows, kEditWin)->placement.normal;
            const EdgeRect output = FindWindowRow(layout.windows, kOutputWin)->placement.normal;
            EXPECT_TRUE(Contains(area, edit) && Contains(area, output));
            EXPECT_TRUE(Common(edit, output).IsEmpty());
            // Of the form's base size of 760 by 870.
            EXPECT_GE(edit.Width(), 540);
            EXPECT_GE(edit.Height(), 700);
        }
    }
}

TEST_F(RegistryTest, OpenStatesFollowTheWindowsUntilTheProgramEnds) {
    Show(kEditWin, {300, 50, 900, 700});
    Show(kOutputWin, {10, 20, 290, 300});
    // A layout can't end the program.
    Row(kEditWin).open = false;
    ApplyLayout();
    EXPECT_TRUE(windows.at(Name(kEditWin))->isVisible());
    Windows().FreezeOpenStates();
    windows.at(Name(kOutputWin))->close();
    windows.clear();
    EXPECT_TRUE(Row(kOutputWin).open);
    EXPECT_EQ(Row(kOutputWin).window, WindowPresence::None);
    EXPECT_EQ(Windows().Find(kOutputWin), nullptr);
}

TEST_F(RegistryTest, ATableOpensItsWindowsByCommandAndByLayout) {
    constexpr int kOutput = 7, kSearch = 9;
    constexpr char16_t kMine[] = u"MyWin";
    CommandRegistry commands;
    auto table = std::make_unique<WindowTable>();
    QList<QPointer<FrameWindow>> made;
    for (const auto& [name, id] : {std::pair(Name(kOutputWin), kOutput), std::pair(Name(kMine), kSearch)}) {
        const auto make = [&made] {
            made += new FrameWindow;
            made.last()->setAttribute(Qt::WA_DeleteOnClose);
            return made.last().data();
        };
        table->Add({name, id, make}, commands);
    }
    const auto ticks = [&commands] {
        return std::pair(commands.StateOf(kOutput).isTicked, commands.StateOf(kSearch).isTicked);
    };
    // Of a layout that opens three windows, the program has one, and closes the one that is open.
    ASSERT_TRUE(commands.Run(kSearch));
    EXPECT_EQ(ticks(), std::pair(false, true));
    Row(kMine).open = false;
    int due = 0;
    for (int i = 0; i < 2; ++i)
        table->ApplyLayout([&due] { ++due; });
    EXPECT_EQ(ticks(), std::pair(false, false));
    EXPECT_TRUE(Row(kShadertoyWin).open);
    EXPECT_EQ(due, 2);
    for (; due > 0; --due)
        table->OpenMissing();
    EXPECT_EQ(ticks(), std::pair(true, false)) << "the second time there is nothing left to open";
    table->ApplyLayout([&due] { ++due; });
    EXPECT_EQ(due, 0);
    commands.Run(kOutput);
    // A window that is closed counts as gone, also while it waits to be deleted.
    for (int i = 0; i < 3; ++i)
        commands.Run(kSearch);
    EXPECT_EQ(Windows().Find(kMine), made.last());
    EXPECT_TRUE(PumpUntil([&made] { return !made[0] && !made[1]; }));
    EXPECT_TRUE(Row(kMine).open && Row(kMine).live);
    table.reset();
    EXPECT_FALSE(made.last());
}

}  // namespace
}  // namespace pixelgrove
