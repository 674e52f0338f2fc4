#include "render/widgets/OutputWindow.h"

#include <QMenu>
#include <QSignalSpy>
#include <QtTest/QTest>

#include "OutputFixture.h"
#include "commands/Commands.h"
#include "render/FrameRenderer.h"

namespace pixelgrove {
namespace {

class OutputWindowTest : public OutputTest {
  protected:
    // Straight to the view, as when the pointer is grabbed by a press and lies outside.
    void SendMouse(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(type, at, at, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(window->View(), &event);
    }
    void SendKey(QEvent::Type type, int key, quint32 scanCode, bool repeat,
                 Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(type, key, modifiers, scanCode, 0, 0, QString(), repeat);
        QCoreApplication::sendEvent(window->View(), &event);
    }
    std::array<int, 3> Key(int code) {
        std::array<uint8_t, kKeyCodes * kKeyRows> rows;
        ReadKeyboardRows(rows);
        return {rows[size_t(code)], rows[size_t(kKeyCodes + code)], rows[size_t(2 * kKeyCodes + code)]};
    }
};

TEST_F(OutputWindowTest, RegistersItsSurfaceAndCloses) {
    Open();
    std::shared_ptr<OutputSurface> surface = player.outputSurface;
    EXPECT_EQ(surface, window->Surface());
    EXPECT_EQ(surface->ClientSize(), (SurfaceSize{640, 360}));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Shader Output"));

    QSignalSpy closed(window, &OutputWindow::Closed);
    QPointer<OutputView> view = window->View();
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(PumpUntil([&] { return !window && !view; }));
    EXPECT_EQ(closed.count(), 1);
    // The render target stays, and says that it is of no more use.
    EXPECT_EQ(player.outputSurface, surface);
    EXPECT_TRUE(IsRetired(*surface));
    EXPECT_EQ(surface->ClientSize(), (SurfaceSize{0, 0}));
    EXPECT_EQ(surface->CreateContext(), nullptr);
    surface->ShowBitmap(CreateFrameBitmap(4, 4));
}

TEST_F(OutputWindowTest, HasNoSizeWhileMinimised) {
    Open();
    window->showMinimized();
    ASSERT_TRUE(PumpUntil([&] {
        return window->Surface()->ClientSize() == SurfaceSize{0, 0};
    })) << "the display needs a window manager";
    window->showNormal();
    EXPECT_TRUE(PumpUntil([&] { return window->Surface()->ClientSize() == SurfaceSize{640, 360}; }));
}

TEST_F(OutputWindowTest, ContextMenu) {
    Open();
    App()->display.alwaysOnTop = 1;
    const std::unique_ptr<QMenu> menu = window->MakeContextMenu();
    QStringList enabled;
    for (const QAction* action : menu->actions()) {
        const QString tick = action->isChecked() ? QStringLiteral("*") : QString();
        if (action->isEnabled()) enabled += action->text() + action->data().toString() + tick;
    }
    EXPECT_EQ(enabled.join(u'|').toStdString(),
              "Window Size|Recording|Always on Top1578*|Full Screen\tF1145012");
    const QList<QAction*> sizes = menu->actions().first()->menu()->actions();
    EXPECT_EQ(sizes.size(), 14);
    for (QAction* action : sizes) {
        const QStringList sides = action->text().remove(u',').split(u' ');
        const SurfaceSize asked{sides[0].toInt(), sides[2].toInt()};
        action->trigger();
        EXPECT_TRUE(PumpUntil([&] { return window->Surface()->ClientSize() == asked; })) << asked.width;
    }
}

TEST_F(OutputWindowTest, AlwaysOnTopKeepsTheNativeWindow) {
    Open();
    const WId before = window->winId();
    for (uint32_t expected : {1u, 0u}) {
        EXPECT_TRUE(commands.Run(kCmdAlwaysOnTop));
        PumpFor(50);
        EXPECT_EQ(App()->display.alwaysOnTop, expected);
        EXPECT_EQ(window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint), expected == 1);
        EXPECT_EQ(window->winId(), before);
        EXPECT_TRUE(window->View()->isExposed());
    }
    window->close();
    ASSERT_TRUE(PumpUntil([this] { return !window; }));
    EXPECT_FALSE(commands.Run(kCmdAlwaysOnTop)) << "of no window";
}

TEST_F(OutputWindowTest, F11FillsTheScreenAndEscapeLeavesIt) {
    Open();
    ContextOnThread run(window->Surface());
    ASSERT_TRUE(run.WaitCurrent());
    const QRect before = window->geometry();
    const QSize screen = window->screen()->size();
    const auto press = [this](Qt::Key key) { QTest::keyClick(window->View(), key); };
    const auto fills = [&](QSize size) { return PumpUntil([&] { return window->View()->size() == size; }); };
    for (const Qt::Key leaving : {Qt::Key_Escape, Qt::Key_F11}) {
        press(Qt::Key_F11);
        EXPECT_TRUE(fills(screen));
        EXPECT_EQ(ToQRect(window->NormalRect()), before);
        press(leaving);
        EXPECT_TRUE(fills({640, 360}));
        EXPECT_TRUE(PumpUntil([&] { return window->geometry() == before; }));
    }
    EXPECT_EQ(Key(27), (std::array{0, 0, 0})) << "not for the shader";
    EXPECT_EQ(Key(122), (std::array{0, 0, 0}));
    press(Qt::Key_Escape);
    EXPECT_EQ(Key(27), (std::array{0, 0, 255})) << "otherwise it is";
    press(Qt::Key_F11);
    commands.Run(kCmdSize640x480);
    EXPECT_TRUE(fills({640, 480}));
}

TEST_F(OutputWindowTest, MouseReachesShadersOfThisWindowOnly) {
    const auto press = QEvent::MouseButtonPress, release = QEvent::MouseButtonRelease,
               move = QEvent::MouseMove;
    using State = std::array<float, 4>;  // x, y, clickX, clickY, as the next frame sees them
    Open();
    SendMouse(press, {10, 20});
    EXPECT_EQ(TakeMouse(), (State{-1, -1, -1, -1})) << "no run draws here yet";

    ContextOnThread run(window->Surface());
    ASSERT_TRUE(run.WaitCurrent());
    struct Step {
        QEvent::Type type;
        QPointF at;
        State expected;
        Qt::MouseButton button = Qt::LeftButton;
    };
    const Step steps[] = {
        // The signs: clickX of the held button, clickY of the first frame after the press.
        {press, {10, 20}, {10, 340, 10, 340}},
        {move, {639, 359}, {639, 1, 10, -340}},
        // Outside nothing is seen, not even the release.
        {move, {-1, 100}, {639, 1, 10, -340}},
        {release, {640, 100}, {639, 1, 10, -340}},
        {move, {300, 0}, {300, 360, 10, -340}},
        {release, {300, 0}, {300, 360, -10, -340}},
        {move, {5, 5}, {300, 360, -10, -340}},
        {press, {7, 7}, {300, 360, -10, -340}, Qt::MiddleButton},
    };
    for (const Step& step : steps) {
        SendMouse(step.type, step.at, step.button);
        EXPECT_EQ(TakeMouse(), step.expected) << step.at.x() << ' ' << step.at.y();
    }
    SendMouse(press, {7, 9});
    SendMouse(release, {7, 9});
    EXPECT_EQ(TakeMouse(), (State{7, 351, -7, -351})) << "released before a frame came";
}

TEST_F(OutputWindowTest, ClickJumpsInTime) {
    Open();
    App()->run->hasContext = 1;
    TimeRequest& request = App()->run->timeRequest;
    const auto press = QEvent::MouseButtonPress, release = QEvent::MouseButtonRelease;
    SendMouse(release, {5, 5});  // of a drag that began elsewhere
    SendMouse(press, {5, 5});
    SendMouse(release, {-3, 5});
    SendMouse(release, {5, 5});
    EXPECT_FALSE(request.Take());
    SendMouse(press, {5, 5});
    SendMouse(release, {5, 5});
    const std::optional<TimeRequest::Place> place = request.Take();
    ASSERT_TRUE(place);
    EXPECT_TRUE(place->time >= 0.1f && place->time <= 4096.0f && !place->framesAnew) << place->time;
}

TEST_F(OutputWindowTest, KeysFillTheRows) {
    using Rows = std::array<int, 3>;
    Open();
    ContextOnThread run(window->Surface());
    ASSERT_TRUE(run.WaitCurrent());
    QTest::keyPress(window->View(), Qt::Key_W);
    EXPECT_EQ(Key('W'), (Rows{255, 255, 255}));
    // Holding: the window system reports pairs, of which only the press counts.
    SendKey(QEvent::KeyRelease, Qt::Key_W, 0, true);
    EXPECT_EQ(Key('W'), (Rows{255, 255, 255}));
    SendKey(QEvent::KeyPress, Qt::Key_W, 0, true);
    EXPECT_EQ(Key('W'), (Rows{255, 255, 0}));
    QTest::keyRelease(window->View(), Qt::Key_W);
    EXPECT_EQ(Key('W'), (Rows{0, 0, 0}));
    // Also when the frame has the keys.
    QTest::keyPress(window.data(), Qt::Key_Left);
    EXPECT_EQ(Key(37), (Rows{255, 255, 255}));
    // Keypad 8 pressed as a digit and released, after Num Lock, as an arrow.
    SendKey(QEvent::KeyPress, Qt::Key_8, 80, false, Qt::KeypadModifier);
    EXPECT_EQ(Key(104), (Rows{255, 255, 255}));
    SendKey(QEvent::KeyRelease, Qt::Key_Up, 80, false, Qt::KeypadModifier);
    EXPECT_EQ(Key(104), (Rows{0, 0, 255}));
    EXPECT_EQ(Key(38), (Rows{0, 0, 0}));
}

}  // namespace
}  // namespace pixelgrove
