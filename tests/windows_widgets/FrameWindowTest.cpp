// Frames as the user meets them: what presses, drags and keys do to them, and what they tell of themselves.
#include "windows/widgets/FrameWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScreen>
#include <QtTest/QTest>
#include <limits>

#include "look/widgets/Theme.h"
#include "support/DisplayTest.h"
#include "windows/widgets/CaptionBar.h"
#include "windows/widgets/KeyPositions.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

const EdgeRect kStart{200, 150, 600, 450};

// The middle of the caption, free of buttons.
QPoint InCaption(const QWidget& frame) {
    return {frame.width() / 3, kCaptionHeight / 2};
}

class FrameWindowTest : public DisplayTest {
  protected:
    void TearDown() override {
        Windows().Clear();
        DisplayTest::TearDown();
    }

    static bool ShowAt(FrameWindow& frame, const EdgeRect& rect) {
        frame.SetFrameRect(rect);
        frame.show();
        if (!QTest::qWaitForWindowExposed(&frame)) return false;
        return PumpUntil([&] { return frame.FrameRect() == rect; });
    }

    // Sends the event to the widget below the point, as the window system would. The button is the one that
    // changes; a move holds the left one.
    static void Mouse(FrameWindow& frame, QEvent::Type type, QPoint screen, Qt::MouseButtons held,
                      Qt::MouseButton button = Qt::NoButton) {
        QWidget* below = held_ ? held_.data() : frame.childAt(frame.mapFromGlobal(screen));
        QWidget* receiver = below ? below : &frame;
        held_ = held && type != QEvent::MouseButtonRelease ? receiver : nullptr;
        QMouseEvent event(type, receiver->mapFromGlobal(QPointF(screen)), QPointF(screen), button, held,
                          Qt::NoModifier);
        QApplication::sendEvent(receiver, &event);
    }

    static void Press(FrameWindow& frame, QPoint screen) {
        Mouse(frame, QEvent::MouseButtonPress, screen, Qt::LeftButton, Qt::LeftButton);
    }
    static void Move(FrameWindow& frame, QPoint screen) {
        Mouse(frame, QEvent::MouseMove, screen, Qt::LeftButton);
    }
    static void Release(FrameWindow& frame, QPoint screen) {
        Mouse(frame, QEvent::MouseButtonRelease, screen, Qt::NoButton, Qt::LeftButton);
    }
    static void Drag(FrameWindow& frame, QPoint from, QPoint way) {
        const QPoint start = frame.mapToGlobal(from);
        Press(frame, start);
        Move(frame, start + way / 2);
        Move(frame, start + way);
        Release(frame, start + way);
    }

    static inline QPointer<QWidget> held_;  // gets the mouse until the button is released
};

// Counts, and lets a test say what closing does.
class ClosingFrame : public FrameWindow {
  public:
    using FrameWindow::FrameWindow;
    int closed = 0;
    bool refuse = false;
    bool destroySelf = false;

  protected:
    void closeEvent(QCloseEvent* event) override {
        ++closed;
        event->setAccepted(!refuse);
        if (destroySelf) delete this;
    }
};

}  // namespace

TEST_F(FrameWindowTest, DragsMoveAndSizeByTheWayOfTheMouse) {
    FrameWindow frame;
    ASSERT_TRUE(ShowAt(frame, kStart));
    struct Case {
        const char* name;
        QPoint from;
        EdgeRect expected;
        Qt::CursorShape cursor;
    };
    const QPoint way(30, 20);
    const Case cases[] = {
        {"caption", {130, 15}, {230, 170, 630, 470}, Qt::ArrowCursor},
        {"left", {2, 150}, {230, 150, 600, 450}, Qt::SizeHorCursor},
        {"right", {397, 150}, {200, 150, 630, 450}, Qt::SizeHorCursor},
        {"top", {200, 2}, {200, 170, 600, 450}, Qt::SizeVerCursor},
        {"bottom", {200, 297}, {200, 150, 600, 470}, Qt::SizeVerCursor},
        {"top left", {2, 2}, {230, 170, 600, 450}, Qt::SizeFDiagCursor},
        {"top right", {397, 12}, {200, 170, 630, 450}, Qt::SizeBDiagCursor},
        {"bottom left", {10, 298}, {230, 150, 600, 470}, Qt::SizeBDiagCursor},
        {"bottom right", {398, 298}, {200, 150, 630, 470}, Qt::SizeFDiagCursor},
        {"inside", {200, 150}, kStart, Qt::ArrowCursor},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        frame.SetFrameRect(kStart);
        ASSERT_TRUE(PumpUntil([&] { return frame.FrameRect() == kStart; }));
        Mouse(frame, QEvent::MouseMove, frame.mapToGlobal(c.from), Qt::NoButton);
        const QWidget* below = frame.childAt(c.from);
        EXPECT_EQ((below ? below : &frame)->cursor().shape(), c.cursor);
        Drag(frame, c.from, way);
        EXPECT_EQ(frame.FrameRect(), c.expected);
        EXPECT_EQ(frame.Client()->size(), frame.size() - frame.FrameExtra());
    }
}

TEST_F(FrameWindowTest, SizingStopsAtTheSmallestClient) {
    FrameWindow frame;
    frame.SetMinimumClientSize({250, 120});
    ASSERT_TRUE(ShowAt(frame, kStart));
    Drag(frame, {2, 298}, {500, -500});
    EXPECT_EQ(frame.Client()->size(), QSize(250, 120));
    EXPECT_EQ(frame.FrameRect().right, kStart.right);
    EXPECT_EQ(frame.FrameRect().top, kStart.top);
    // The program itself doesn't go below, nor does a window manager that knows.
    frame.SetFrameRect({0, 0, 100, 60});
    EXPECT_EQ(frame.Client()->size(), QSize(250, 120));
    EXPECT_EQ(frame.windowHandle()->minimumSize(), frame.size());
}

TEST_F(FrameWindowTest, ADragEndsWithItsWindowOrItsButton) {
    FrameWindow frame;
    ASSERT_TRUE(ShowAt(frame, kStart));
    const QPoint start = frame.mapToGlobal(InCaption(frame));

    Press(frame, start);
    frame.hide();
    held_ = nullptr;
    frame.show();
    Move(frame, start + QPoint(40, 0));
    EXPECT_EQ(frame.FrameRect(), kStart);
    held_ = nullptr;

    Press(frame, start);
    Mouse(frame, QEvent::MouseMove, start + QPoint(40, 0), Qt::NoButton);  // the release went elsewhere
    held_ = nullptr;
    Move(frame, start + QPoint(80, 0));
    EXPECT_EQ(frame.FrameRect(), kStart);
    held_ = nullptr;

    auto shortLived = std::make_unique<FrameWindow>();
    ASSERT_TRUE(ShowAt(*shortLived, kStart));
    Press(*shortLived, start);
    shortLived.reset();  // no drag may be left in the registry, which the next one would continue
    Drag(frame, InCaption(frame), {10, 10});
    EXPECT_EQ(frame.FrameRect(), Offset(kStart, 10, 10));
}

TEST_F(FrameWindowTest, ARefusedPlaceIsNotTheWindows) {
    if (qApp && !HasWindowManager()) GTEST_SKIP() << "no window manager";
    FrameWindow frame;
    frame.SetFrameRect(kStart);
    Windows().Present(frame, kOutputWin);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
    // It is held at the edge of the screen; the second time nothing changes any more that it would report.
    EdgeRect held;
    for (const int left : {-3000, -4000}) {
        frame.SetFrameRect(Offset(kStart, left, 0));
        ASSERT_TRUE(PumpUntil([&] { return frame.IsSettled(); }));
        if (held.IsEmpty()) held = frame.FrameRect();
        EXPECT_GT(frame.FrameRect().right, 0);
        EXPECT_EQ(frame.FrameRect(), held);
        EXPECT_EQ(Windows().RowOf(frame)->placement.normal, held);
    }
    Drag(frame, InCaption(frame), {400, 20});
    EXPECT_EQ(frame.FrameRect(), Offset(held, 400, 20));
}

TEST_F(FrameWindowTest, MaximisesOverTheWorkAreaAndBack) {
    FrameWindow frame;
    ASSERT_TRUE(ShowAt(frame, kStart));
    auto* button = frame.findChild<QAbstractButton*>(QStringLiteral("maximiseButton"));
    ASSERT_NE(button, nullptr);
    button->click();
    const EdgeRect area = FromQRect(frame.screen()->availableGeometry());
    ASSERT_TRUE(PumpUntil([&] { return frame.IsMaximised() && frame.FrameRect() == area; }));
    if (HasWindowManager()) {
        EXPECT_TRUE(frame.windowState() & Qt::WindowMaximized) << "the manager knows";
    }
    EXPECT_EQ(frame.Client()->width(), area.Width()) << "no border while maximised";
    EXPECT_EQ(frame.NormalRect(), kStart);
    EXPECT_EQ(frame.Placement().showCommand, 3);
    EXPECT_EQ(frame.Placement().normal, kStart);

    // Neither a click nor the former border does anything.
    Drag(frame, {300, 15}, {5, 5});
    Drag(frame, {1, 500}, {50, 50});
    EXPECT_EQ(frame.FrameRect(), area);

    frame.SetMaximised(false);
    ASSERT_TRUE(PumpUntil([&] { return !frame.IsMaximised() && frame.FrameRect() == kStart; }));
    EXPECT_EQ(frame.Placement().showCommand, 1);
    EXPECT_EQ(frame.Placement().length, WindowPlacement::kLength);

    Mouse(frame, QEvent::MouseButtonDblClick, frame.mapToGlobal(InCaption(frame)), Qt::LeftButton,
          Qt::LeftButton);
    held_ = nullptr;
    ASSERT_TRUE(PumpUntil([&] { return frame.IsMaximised() && frame.FrameRect() == area; }));
    frame.SetFrameRect(kStart);
    EXPECT_TRUE(PumpUntil([&] { return !frame.IsMaximised() && frame.FrameRect() == kStart; }));
}

TEST_F(FrameWindowTest, PullingAMaximisedCaptionTakesTheWindowAlong) {
    FrameWindow frame;
    ASSERT_TRUE(ShowAt(frame, kStart));
    frame.SetMaximised(true);
    ASSERT_TRUE(PumpUntil([&] { return frame.IsMaximised() && frame.FrameRect() != kStart; }));
    const EdgeRect area = frame.FrameRect();
    const QPoint start(area.left + int(area.Width()) / 2, area.top + 15);
    Press(frame, start);
    Move(frame, start + QPoint(0, 40));
    EXPECT_TRUE(PumpUntil([&] { return !frame.IsMaximised(); }));
    // In the middle of the caption before, and in it now.
    const EdgeRect pulled{start.x() - 200, area.top + 40, start.x() + 200, area.top + 340};
    EXPECT_EQ(frame.FrameRect(), pulled);
    Move(frame, start + QPoint(25, 60));
    Release(frame, start + QPoint(25, 60));
    EXPECT_EQ(frame.FrameRect(), Offset(pulled, 25, 20));
    EXPECT_EQ(frame.NormalRect(), Offset(pulled, 25, 20));
}

TEST_F(FrameWindowTest, AltF4ClosesWhileAnEditorHasTheFocus) {
    ClosingFrame frame;
    auto* edit = new QPlainTextEdit(frame.Client());
    ASSERT_TRUE(ShowAt(frame, kStart));
    frame.activateWindow();
    edit->setFocus();
    ASSERT_TRUE(PumpUntil([&] { return edit->hasFocus(); }));
    frame.refuse = true;
    QTest::keyClick(frame.windowHandle(), Qt::Key_F4, Qt::AltModifier);
    EXPECT_EQ(frame.closed, 1);
    EXPECT_TRUE(frame.isVisible());
    QTest::keyClick(frame.windowHandle(), Qt::Key_F4);
    EXPECT_EQ(frame.closed, 1);
    frame.refuse = false;
    QTest::keyClick(edit, Qt::Key_F4, Qt::AltModifier);
    EXPECT_EQ(frame.closed, 2);
    EXPECT_FALSE(frame.isVisible());
    EXPECT_TRUE(edit->toPlainText().isEmpty());
}

TEST_F(FrameWindowTest, ShortcutsGoByPositionWhereNoLayoutIsLatin) {
    FrameWindow frame;
    bool latin = false;
    const KeyPositions positions(nullptr, [&latin] { return latin; });
    QAction action;
    int triggered = 0;
    QObject::connect(&action, &QAction::triggered, [&triggered] { ++triggered; });
    action.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    frame.addAction(&action);
    ASSERT_TRUE(ShowAt(frame, kStart));
    frame.activateWindow();
    ASSERT_TRUE(PumpUntil([&] { return frame.isActiveWindow(); }));
    constexpr int kYeru = 0x42b;
    const struct {
        bool latin;
        int key;
        Qt::KeyboardModifiers modifiers;
        quint32 scanCode;
        int triggered;
    } rows[] = {
        {false, kYeru, Qt::ControlModifier, 39, 1},  // S stands there
        {false, kYeru, Qt::ControlModifier, 40, 0},
        {false, kYeru, Qt::ControlModifier, 23, 0},
        {false, kYeru, Qt::NoModifier, 39, 0},
        {false, Qt::Key_A, Qt::ControlModifier, 39, 0},  // the keyboard knows better
        {true, kYeru, Qt::ControlModifier, 39, 0},
    };
    for (const auto& row : rows) {
        latin = row.latin;
        triggered = 0;
        QKeyEvent event(QEvent::KeyPress, row.key, row.modifiers, row.scanCode, 0, 0);
        QCoreApplication::sendEvent(frame.windowHandle(), &event);
        EXPECT_EQ(triggered, row.triggered) << row.key << " at " << row.scanCode;
    }
    EXPECT_EQ(UsKeyAt(59), Qt::Key_Comma);
    EXPECT_EQ(UsKeyAt(60 + 2), 0);
}

TEST_F(FrameWindowTest, OnlyAnAcceptedCloseIsNoted) {
    ClosingFrame frame;
    frame.SetFrameRect(kStart);
    Windows().Present(frame, kOutputWin);
    ASSERT_NE(Windows().RowOf(frame), nullptr);
    frame.refuse = true;
    auto* button = frame.findChild<QAbstractButton*>(QStringLiteral("closeButton"));
    button->click();
    EXPECT_TRUE(Windows().RowOf(frame)->open);
    frame.refuse = false;
    button->click();
    EXPECT_EQ(frame.closed, 2);
    EXPECT_FALSE(Windows().RowOf(frame)->open);
}

TEST_F(FrameWindowTest, AWindowMayDestroyItselfWhileItCloses) {
    for (const bool byKey : {false, true}) {
        QPointer<ClosingFrame> frame = new ClosingFrame;
        frame->destroySelf = true;
        ASSERT_TRUE(ShowAt(*frame, kStart));
        if (byKey) {
            QTest::keyClick(frame->windowHandle(), Qt::Key_F4, Qt::AltModifier);
        } else {
            Press(*frame, frame->mapToGlobal(InCaption(*frame)));
            frame->close();
            held_ = nullptr;
        }
        EXPECT_TRUE(frame.isNull());
        PumpFor(20);
    }
}

TEST_F(FrameWindowTest, MinimisingKeepsTheNormalPlace) {
    if (qApp && !HasWindowManager()) GTEST_SKIP() << "no window manager";
    FrameWindow frame;
    ASSERT_TRUE(ShowAt(frame, kStart));
    frame.Minimise();
    ASSERT_TRUE(PumpUntil([&] { return frame.isMinimized(); }));
    EXPECT_EQ(frame.Placement().showCommand, 2);
    EXPECT_EQ(frame.Placement().normal, kStart);
    frame.showNormal();
    EXPECT_TRUE(PumpUntil([&] { return frame.Placement().showCommand == 1; }));
    EXPECT_EQ(frame.NormalRect(), kStart);
}

TEST_F(FrameWindowTest, TheWindowManagersMaximisingIsFollowed) {
    if (qApp && !HasWindowManager()) GTEST_SKIP() << "no window manager";
    FrameWindow frame;
    ASSERT_TRUE(ShowAt(frame, kStart));
    frame.setWindowState(Qt::WindowMaximized);  // asks the window manager, whose answer is what counts here
    const EdgeRect area = FromQRect(frame.screen()->availableGeometry());
    ASSERT_TRUE(PumpUntil([&] { return frame.FrameRect() == area; }));
    EXPECT_TRUE(frame.IsMaximised());
    EXPECT_EQ(frame.NormalRect(), kStart);
    frame.SetMaximised(false);
    EXPECT_TRUE(PumpUntil([&] { return frame.FrameRect() == kStart; }));
    PumpFor(100);
    EXPECT_EQ(frame.FrameRect(), kStart);
    EXPECT_FALSE(frame.IsMaximised());
}

}  // namespace pixelgrove
