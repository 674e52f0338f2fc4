// The playback buttons against a real run on the display's OpenGL.
#include <sys/resource.h>

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>

#include "WindowFixture.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"
#include "support/HangingSurface.h"
#include "support/Memory.h"
#include "ui/FpsField.h"

namespace pixelgrove {
namespace {

const QString kPlain = QStringLiteral("void mainImage(out vec4 c, in vec2 p)\n{\n    c = vec4(iTime);\n}\n");
const QString kBroken = QStringLiteral("void mainImage(out vec4 c, in vec2 p)\n{\n\n    c = nothing;\n}\n");

class PlaybackTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (!App()) return;
        if (!App()->display.openGlOk) GTEST_SKIP() << "no usable OpenGL on this display";
        ReplaceText(kPlain);
    }
    // The run takes up this time while it is paused.
    static bool TimeBecomes(float time) {
        return PumpUntil([time] { return App()->run->playTime == time; });
    }
    QString SourceOfRun() const {
        return QString::fromLatin1(player.currentRun->request.project.stages[kStageImage].source);
    }
};

TEST_F(PlaybackTest, ButtonsFollowTheRun) {
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    Click("playButton");
    EXPECT_EQ(Enabled(), QStringLiteral("PR")) << "compiling changes no button";
    ASSERT_TRUE(WaitRunning());
    EXPECT_EQ(Status(), QStringLiteral("Compilation successful."));
    EXPECT_TRUE(PumpUntil([this] { return player.currentRun->framesDrawn > 2; }));

    Click("pauseButton");
    EXPECT_EQ(Enabled(), QStringLiteral("pS"));
    EXPECT_EQ(App()->run->paused, 1u);
    Click("stopButton");
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    EXPECT_EQ(App()->run->paused, 0u);
    EXPECT_EQ(player.currentRun, nullptr);
    EXPECT_EQ(App()->run->hasContext, 0u);
}

TEST_F(PlaybackTest, RecordStartsTheProjectWritesOneFrameAndPlaysOn) {
    *Hold(*settings.recorder.framePath) = {folder.path(), QStringLiteral("f-%d.png")};
    App()->run->recordWidth = App()->run->recordHeight = 20;
    App()->run->recordFrameDelayMs = 0;
    Click("recordButton");
    ASSERT_TRUE(WaitRunning());
    ASSERT_TRUE(PumpUntil([this] { return Status() == QStringLiteral("Recording complete: 1 frames."); }));
    EXPECT_EQ(QImage(folder.filePath(QStringLiteral("f-1.png"))).width(), 20);
    Click("recordButton");
    ASSERT_TRUE(PumpUntil([this] { return Status() == QStringLiteral("Recording complete: 2 frames."); }));
    EXPECT_EQ(Enabled(), QStringLiteral("RpSs"));
    EXPECT_EQ(QDir(folder.path()).entryList({QStringLiteral("f-*")}).size(), 2);
}

TEST_F(PlaybackTest, WhatIsPostedIsSaidInItsOrder) {
    window->PostStatus(QStringLiteral("first"));
    window->PostStatus(QStringLiteral("second"));
    window->SetStatusText(QStringLiteral("newer"));
    QCoreApplication::processEvents();
    EXPECT_EQ(Status(), QStringLiteral("newer"));
    window->PostStatus(QStringLiteral("third"));
    window->AddStatusLine(QStringLiteral("below"));
    EXPECT_EQ(Status(), QStringLiteral("third\nbelow"));
    App()->host->PostCommand(kCmdUseGdiDisplay, 0);
    App()->host->PostCommand(kCmdMultisample4, 0);
    App()->host->CancelPostedCommand(kCmdUseGdiDisplay);
    window->PostStatus(QStringLiteral("last"));
    EXPECT_TRUE(PumpUntil([this] { return Status() == QStringLiteral("last"); }));
    EXPECT_EQ(App()->display.multisampleIndex, 2u);
    EXPECT_EQ(App()->run->useGdiDisplay, 0u) << "it was taken back";
}

TEST_F(PlaybackTest, ARunWithoutAThreadIsTold) {
    if (!test::kMemoryIsMeasurable) GTEST_SKIP() << "sanitizers take address space of their own";
    // No room for the stack of another thread.
    rlimit before{};
    getrlimit(RLIMIT_AS, &before);
    const rlimit tight{rlim_t(test::AddressSpaceBytes()) + (32 << 20), before.rlim_max};
    setrlimit(RLIMIT_AS, &tight);
    Click("playButton");
    setrlimit(RLIMIT_AS, &before);
    EXPECT_EQ(Status(), QStringLiteral("The system gives no thread to play on."));
    EXPECT_EQ(player.currentRun, nullptr);
    EXPECT_TRUE(PlayUntilRunning());
}

TEST_F(PlaybackTest, AfterAFailedCompileTheFirstPlayOnlyClears) {
    ReplaceText(kBroken);
    window->SetStatusText(QString());
    Click("playButton");
    ASSERT_TRUE(PumpUntil([this] { return !Status().isEmpty(); }));
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    EXPECT_TRUE(Status().contains(QStringLiteral("Image(4)"))) << qPrintable(Status());
    EXPECT_TRUE(Editor()->IsErrorLine(4));
    EXPECT_FALSE(Editor()->IsErrorLine(3));
    const QString log = Status();

    ReplaceText(kPlain);
    Click("playButton");
    EXPECT_EQ(player.currentRun, nullptr);
    EXPECT_EQ(App()->run->hasContext, 0u);
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    EXPECT_EQ(Status(), log + QStringLiteral("\nPress Play again to compile.")) << "the log stays";
    EXPECT_FALSE(Editor()->IsErrorLine(4)) << "the marks go with the press";
    EXPECT_TRUE(PlayUntilRunning());
}

TEST_F(PlaybackTest, ErrorsOfAStageThatIsNotShownWaitUntilItIs) {
    AddStage(App()->project, kStageBufferA);
    SelectStage(App()->project, kStageBufferA);
    ReplaceText(kBroken + QStringLiteral("#define N 1 // n [0..4]\n"));
    SelectStage(App()->project, kStageImage);
    Click("playButton");
    ASSERT_TRUE(PumpUntil([] { return !App()->project.stageErrors[kStageBufferA].empty(); }));
    ASSERT_TRUE(PumpUntil([this] { return Status().contains(u'\n'); }));
    EXPECT_EQ(Status(), QStringLiteral("[ Image ] No errors.\nBuffer A has errors."));
    SelectStage(App()->project, kStageBufferA);
    EXPECT_TRUE(Status().contains(QStringLiteral("Buffer A(4)"))) << qPrintable(Status());
    EXPECT_TRUE(Editor()->IsErrorLine(4));
    EXPECT_TRUE(Status().contains(QStringLiteral("Buffer A(6): note: the control \"n \"")))
        << qPrintable(Status());
    EXPECT_TRUE(Editor()->IsErrorLine(6));
}

TEST_F(PlaybackTest, StartAndSetStartMoveTheShadersTime) {
    ASSERT_TRUE(PlayUntilRunning());
    Click("pauseButton");
    QTest::qWait(150);  // the frame that was under way
    App()->run->timeRequest.Ask({12.34567f});
    ASSERT_TRUE(PumpUntil([this] { return Text("currentTimeText") == QStringLiteral("12.346"); }));
    Click("setStartButton");
    EXPECT_EQ(Text("startTimeEdit"), QStringLiteral("12.346"));
    EXPECT_TRUE(TimeBecomes(12.346f)) << "the displayed number counts";

    // Randomize enables the edit until its first click, and only then decides.
    auto* check = Control<QCheckBox>("randomizeCheck");
    EXPECT_TRUE(check->isChecked() && Control<QLineEdit>("startTimeEdit")->isEnabled());
    check->click();
    check->click();
    EXPECT_FALSE(Control<QLineEdit>("startTimeEdit")->isEnabled());
    QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(8, 10));
    ASSERT_FALSE(check->isChecked());
    RenderContext& context = *player.currentRun->context;
    context.frameCounter = 99;
    for (const auto& [text, time] : {std::pair(QStringLiteral("7.5"), 7.5f), {QStringLiteral("abc"), 0.0f}}) {
        Control<QLineEdit>("startTimeEdit")->setText(text);
        Run(kCmdStart);
        EXPECT_TRUE(TimeBecomes(time)) << qPrintable(text);
    }
    EXPECT_EQ(context.frameCounter, 0);

    check->click();
    for (int i = 0; i < 2; ++i) {
        const float before = App()->run->playTime;
        Run(kCmdStart);
        EXPECT_TRUE(PumpUntil([before] { return App()->run->playTime != before; })) << "drawn anew";
        EXPECT_TRUE(App()->run->playTime >= 0.1f && App()->run->playTime <= 4096.0f) << App()->run->playTime;
    }

    // Without a run the last displayed time counts, and Start does nothing.
    App()->run->timeRequest.Ask({3.25f});
    ASSERT_TRUE(PumpUntil([this] { return Text("currentTimeText") == QStringLiteral("3.250"); }));
    Click("stopButton");
    Run(kCmdSetStartToCurrent);
    EXPECT_EQ(Text("startTimeEdit"), QStringLiteral("3.250"));
    EXPECT_EQ(App()->project.startTime, 3.25f);
    Run(kCmdStart);
    EXPECT_EQ(Text("currentTimeText"), QStringLiteral("3.250"));
}

TEST_F(PlaybackTest, RestartCompilesTheTextOfTheMoment) {
    const auto restarted = [this](const QString& text) {
        const std::weak_ptr<RenderRun> before = player.currentRun;
        ReplaceText(text);
        App()->run->paused = 1;
        Run(kCmdRestart);
        EXPECT_TRUE(before.expired());
        EXPECT_EQ(App()->run->paused, 0u);
        return player.currentRun && SourceOfRun() == text;
    };
    EXPECT_TRUE(restarted(kPlain)) << "also when nothing runs";
    EXPECT_TRUE(restarted(kPlain + u' ')) << "also when the run has only begun";
    ASSERT_TRUE(WaitRunning());
    EXPECT_TRUE(restarted(kPlain + QStringLiteral("// new")));
    ASSERT_TRUE(WaitRunning());
    window->SetStatusText(QString());
    EXPECT_TRUE(restarted(kBroken));
    ASSERT_TRUE(PumpUntil([this] { return !Status().isEmpty(); }));
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    EXPECT_TRUE(restarted(kPlain)) << "needs no second press after a failure";
    EXPECT_TRUE(WaitRunning());

    // A control that needs a new compile asks the run for it.
    const std::weak_ptr<RenderRun> before = player.currentRun;
    App()->run->restartRequested = 1;
    EXPECT_TRUE(PumpUntil([&] { return before.expired() && player.currentRun; }));
    EXPECT_EQ(App()->run->restartRequested, 0u);
    EXPECT_TRUE(WaitRunning());
}

TEST_F(PlaybackTest, TheRateIsClampedWhenTheEditIsLeftAndAtPlay) {
    auto* field = Control<FpsField>("fpsTarget");
    auto* edit = field->findChild<QLineEdit*>();
    for (const auto& [typed, rate] : {std::pair(300, 240u), {3, 10u}, {241, 240u}, {-7, 10u}, {61, 61u}}) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QString::number(typed));
        EXPECT_NE(App()->run->fpsTarget, rate) << "nothing counts before the edit is left";
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(App()->run->fpsTarget, rate) << typed;
        EXPECT_EQ(edit->text(), QString::number(rate));
    }
    edit->setText(QStringLiteral("no number"));
    Run(kCmdFpsTarget);
    EXPECT_EQ(App()->run->fpsTarget, 61u);
    edit->setText(QStringLiteral("500"));
    ASSERT_TRUE(PlayUntilRunning());
    EXPECT_EQ(App()->run->fpsTarget, 240u);
    EXPECT_TRUE(PumpUntil([&] { return edit->text() == QStringLiteral("240"); }));
    // What is being typed outlives the ticks of the displays.
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("7"));
    QTest::keyClick(field, Qt::Key_Up);
    for (int tick = 0; tick < 3; ++tick)
        ASSERT_TRUE(
            PumpUntil([&, time = Text("currentTimeText")] { return Text("currentTimeText") != time; }));
    QTest::keyClick(field, Qt::Key_1);
    EXPECT_EQ(edit->text(), QStringLiteral("1")) << "the arrow had selected its number";
    QTest::keyClick(field, Qt::Key_6);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(App()->run->fpsTarget, 16u);
    edit->setText(QStringLiteral("no number"));
    EXPECT_TRUE(PumpUntil([&] { return edit->text() == QStringLiteral("16"); }));
}

TEST_F(PlaybackTest, F5PlaysTheTextAsItStands) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    ReplaceText(kBroken);
    window->SetStatusText(QString());
    press(Qt::Key_F5);
    ASSERT_TRUE(PumpUntil([this] { return !Status().isEmpty(); }));
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    ReplaceText(kPlain);
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(WaitRunning()) << "with no second press";
    EXPECT_EQ(Editor()->toPlainText(), kPlain);
    for (const QString& text : {kPlain + u'1', kPlain}) {  // the second while the first compiles
        ReplaceText(text);
        press(Qt::Key_F5);
        EXPECT_EQ(SourceOfRun(), text);
        EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    }
    EXPECT_TRUE(WaitRunning());
    press(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
}

TEST_F(PlaybackTest, TheFocusStaysThroughPlayAndStop) {
    Editor()->setFocus();
    ASSERT_TRUE(PlayUntilRunning());
    EXPECT_EQ(window->focusWidget(), Editor());
    Click("stopButton");
    EXPECT_EQ(window->focusWidget(), Editor());
    // By its own key a button is left only when it is disabled, for its counterpart.
    Control<QWidget>("playButton")->setFocus();
    QTest::keyClick(Control<QWidget>("playButton"), Qt::Key_Space);
    ASSERT_TRUE(WaitRunning());
    EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("stopButton"));
    QTest::keyClick(window->focusWidget(), Qt::Key_Space);
    EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("playButton"));
}

TEST_F(PlaybackTest, WhatHangsHoldsUpNeitherRestartNorExit) {
    Run(kCmdUseGdiDisplay);
    const auto hang = [this] {
        const auto surface = std::make_shared<test::HangingSurface>(test::HangingSurface::In::Frame);
        player.outputSurface = surface;
        Run(kCmdPlay);
        EXPECT_TRUE(PumpUntil([&] { return surface->IsHanging(); }));
        player.currentRun->stopWaitMs = 5;
        player.outputSurface = nullptr;
        return surface;
    };
    const auto first = hang();
    Run(kCmdRestart);
    EXPECT_EQ(AbandonedRuns(), 1);
    EXPECT_TRUE(WaitRunning());
    Run(kCmdStop);
    const auto second = hang();
    answer = true;
    EXPECT_TRUE(window->close());
    EXPECT_EQ(AbandonedRuns(), 2);
    first->Release();
    second->Release();
    EXPECT_TRUE(PumpUntil([] { return AbandonedRuns() == 0; }));
}

TEST_F(PlaybackTest, ClosingTheOutputWindowKeepsTheRunStoppable) {
    Run(kCmdAnimationWindow);
    ASSERT_NE(OutputFrame(), nullptr);
    EXPECT_TRUE(window->MenuEntries().Action(kCmdAnimationWindow)->isChecked());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(OutputFrame()));
    ASSERT_TRUE(PlayUntilRunning());
    EXPECT_EQ(player.currentRun->request.surface, player.outputSurface);
    const SurfaceSize size = player.outputSurface->ClientSize();

    const auto close = [this] {
        OutputFrame()->close();
        EXPECT_EQ(OutputFrame(), nullptr);
        EXPECT_FALSE(window->MenuEntries().Action(kCmdAnimationWindow)->isChecked());
        const uint64_t before = player.currentRun->framesDrawn;
        EXPECT_TRUE(PumpUntil([&] { return player.currentRun->framesDrawn > before + 2; }));
    };
    close();
    Run(kCmdAnimationWindow);
    EXPECT_EQ(player.currentRun->request.surface, player.outputSurface) << "the run is seen again";
    close();
    Click("stopButton");
    EXPECT_EQ(AbandonedRuns(), 0);

    // Without a window the next run draws off screen, at the size that the window had.
    ASSERT_TRUE(PlayUntilRunning());
    EXPECT_NE(player.currentRun->request.surface, player.outputSurface);
    EXPECT_EQ(player.currentRun->request.surface->ClientSize(), size);
    EXPECT_TRUE(PumpUntil([this] { return player.currentRun->framesDrawn > 2; }));
}

TEST_F(PlaybackTest, AFileThatAnotherProgramChangesIsReadAgainAndPlayedOn) {
    const QString path = FileWith(kTwoStageProject);
    const auto change = [&path](const char* code) {
        QByteArray text = kTwoStageProject;
        EXPECT_TRUE(WriteWholeFile(path, text.replace("c=vec4(1)", code)));
    };
    const auto image = [] { return App()->project.documents[kStageImage].text; };
    // Starts are random.
    const auto isTimeKept = [] { return App()->run->playTime > 1000.0f && App()->run->playTime < 1100.0f; };
    Run(kCmdReloadWhenChanged);
    ASSERT_TRUE(window->Projects().Load(path));
    ASSERT_TRUE(PlayUntilRunning() && PumpUntil([this] { return player.currentRun->framesDrawn > 2; }));
    App()->run->timeRequest.Ask({1000.0f});
    ASSERT_TRUE(PumpUntil(isTimeKept));

    change("c=vec4(2)");
    ASSERT_TRUE(PumpUntil([this] { return SourceOfRun().contains(u"vec4(2)") && Enabled() == u"RpSs"; }));
    EXPECT_TRUE(isTimeKept());
    EXPECT_EQ(player.currentRun->request.project.stages[kStageCommon].source, "// shared");
    EXPECT_TRUE(player.currentRun->request.playedUpTo->frameCounter > 1);

    // A text that doesn't compile keeps the time for the next.
    testing::internal::CaptureStderr();
    change("\\nc=gone");
    EXPECT_TRUE(PumpUntil([] { return !App()->project.stageErrors[kStageImage].empty(); }));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find(path.toStdString() + ":2:"), std::string::npos) << said;
    EXPECT_NE(said.find("error: Image: "), std::string::npos) << said;
    change("c=vec4(3)");
    ASSERT_TRUE(PumpUntil([this] { return SourceOfRun().contains(u"vec4(3)") && Enabled() == u"RpSs"; }));
    EXPECT_TRUE(isTimeKept());

    // Nor does the picture begin anew.
    change("c=vec4(.2)");
    ASSERT_TRUE(PumpUntil([this] { return SourceOfRun().contains(u"vec4(.2)") && Enabled() == u"RpSs"; }));
    ASSERT_TRUE(PumpUntil([this] { return player.currentRun->framesDrawn > 0; }));
    change("c=texelFetch(iChannel0,ivec2(p),0)");
    ASSERT_TRUE(PumpUntil([this] { return SourceOfRun().contains(u"Fetch") && Enabled() == u"RpSs"; }));
    ASSERT_TRUE(PumpUntil([this] { return player.currentRun->framesDrawn > 0; }));
    QGuiApplication::clipboard()->clear();
    Run(kCmdCopyPicture);
    EXPECT_TRUE(PumpUntil([] { return !QGuiApplication::clipboard()->image().isNull(); }));
    EXPECT_EQ(qRed(QGuiApplication::clipboard()->image().pixel(2, 2)), 51);

    // What this program saves is no change.
    const std::shared_ptr<RenderRun> run = player.currentRun;
    ReplaceText(kPlain);
    Run(kCmdSaveProject);
    QTest::qWait(100);
    EXPECT_EQ(player.currentRun, run);

    // Unsaved changes stay, unless the user gives them up.
    ReplaceText(kBroken);
    change("c=vec4(4)");
    ASSERT_TRUE(PumpUntil([this] { return questions == 1; }));
    EXPECT_EQ(image(), kBroken);
    EXPECT_EQ(player.currentRun, run);
    answer = true;
    change("c=vec4(5)");
    ASSERT_TRUE(PumpUntil([&] { return image().contains(u"vec4(5)"); }));
    EXPECT_EQ(questions, 2);
    EXPECT_TRUE(App()->project.previousProject) << "nor are they lost then";

    // A source file is its stage's, and opening it is no change of it.
    const QString source = FileWith("// a", QStringLiteral("glsl"));
    SelectStage(App()->project, kStageCommon);
    ASSERT_TRUE(window->Projects().LoadSource(source));
    SelectStage(App()->project, kStageImage);
    EXPECT_TRUE(WriteWholeFile(source, "// b"));
    EXPECT_TRUE(PumpUntil([] { return App()->project.documents[kStageCommon].text == u"// b"; }));
    EXPECT_EQ(App()->project.currentStage, uint32_t(kStageImage));
    EXPECT_EQ(questions, 2);
}

}  // namespace
}  // namespace pixelgrove
