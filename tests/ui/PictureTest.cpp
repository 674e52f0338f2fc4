// What stands on the screen while a project plays: both present paths, several sizes, windows that come and
// go, a shader that hangs.
#include <QClipboard>
#include <QGuiApplication>

#include "OutputFixture.h"
#include "support/Memory.h"

namespace pixelgrove {
namespace {

// A white frame of one pixel around four quarters: red, green below; blue, yellow above.
const QString kQuarters = QStringLiteral(
    "void mainImage(out vec4 c, in vec2 p) {\n"
    "  vec2 s = iResolution.xy;\n"
    "  bvec2 up = greaterThan(p, 0.5 * s);\n"
    "  c = up.y ? (up.x ? vec4(1, 1, 0, 1) : vec4(0, 0, 1, 1)) : (up.x ? vec4(0, 1, 0, 1) : vec4(1, 0, 0, "
    "1));\n"
    "  if (min(p.x, p.y) < 1.0 || p.x > s.x - 1.0 || p.y > s.y - 1.0) c = vec4(1);\n"
    "}\n");

// Each frame takes about twice as long as the one before, on a machine of any speed. The weight lies in the
// body of the loop: drivers that draw on the processor end loops after 65535 turns.
const QString kDoubling = QStringLiteral(
    "float a(float x) { return sin(sin(sin(sin(x + iTime)))); }\n"
    "float b(float x) { return a(a(a(a(x)))); }\n"
    "void mainImage(out vec4 c, in vec2 p) {\n"
    "  float x = p.x;\n"
    "  int n = 1 << min(iFrame, 15);\n"
    "  for (int i = 0; i < n; ++i) x = b(b(b(b(x))));\n"
    "  c = vec4(x);\n"
    "}\n");

class PictureTest : public OutputTest {
  protected:
    void SetUp() override {
        OutputTest::SetUp();
        if (App()) OpenOutput();
    }
    bool ShowsQuarters(const QSize& size) const {
        const QImage image = Screenshot();
        if (image.size() != size) return false;
        const int w = size.width();
        const int h = size.height();
        const std::pair<QPoint, QColor> expected[] = {
            {{0, 0}, Qt::white},
            {{w - 1, h - 1}, Qt::white},
            {{0, h - 1}, Qt::white},
            {{w - 1, 0}, Qt::white},
            {{w / 2, 0}, Qt::white},
            {{1, 1}, Qt::blue},
            {{w - 2, 1}, Qt::yellow},
            {{1, h - 2}, Qt::red},
            {{w - 2, h - 2}, Qt::green},
            {{w / 4, h / 4}, Qt::blue},
            {{w / 2 - 2, h / 2 - 2}, Qt::blue},
            {{w / 2 + 2, h / 2 + 2}, Qt::green},
        };
        for (const auto& [at, colour] : expected) {
            if (image.pixelColor(at) != colour) return false;
        }
        return true;
    }
};

TEST_F(PictureTest, BothPathsShowExactPixelsAtEverySize) {
    ReplaceText(kQuarters);
    for (const bool readBack : {false, true, false}) {
        App()->run->useGdiDisplay = readBack;
        ASSERT_TRUE(PlayUntilRunning());
        for (const QSize size : {QSize(640, 360), QSize(320, 241), QSize(801, 600), QSize(173, 77)}) {
            Output().ResizeClient(size);
            EXPECT_TRUE(PumpUntil([&] { return ShowsQuarters(size); }))
                << "read back: " << readBack << ", " << size.width() << " by " << size.height();
        }
        Run(kCmdStop);
    }
}

TEST_F(PictureTest, ThePathCanBeSwitchedWhileAProjectPlays) {
    ReplaceText(kQuarters);
    ASSERT_TRUE(PlayUntilRunning());
    for (int i = 0; i < 6; ++i) {
        Run(kCmdUseGdiDisplay);
        Output().ResizeClient({300 + 10 * i, 200});
        EXPECT_TRUE(PumpUntil([&] { return ShowsQuarters({300 + 10 * i, 200}); })) << i;
    }
}

TEST_F(PictureTest, ThePictureIsCopiedAndSavedWhileItPlaysOrRests) {
    const auto isQuarters = [](const QImage& image) {
        return !image.isNull() && image.size() == QSize(320, 240) &&
               image.pixelColor(10, 10) != image.pixelColor(310, 230);
    };
    ReplaceText(kQuarters);
    Run(kCmdCopyPicture);  // nothing plays yet
    ASSERT_TRUE(PlayUntilRunning());
    Output().ResizeClient({320, 240});
    ASSERT_TRUE(PumpUntil([&] { return ShowsQuarters({320, 240}); }));
    EXPECT_TRUE(PumpUntil([this] { return Output().windowTitle().contains(QStringLiteral("320 x 240")); }));
    QGuiApplication::clipboard()->clear();
    Run(kCmdCopyPicture);
    EXPECT_TRUE(PumpUntil([&] { return isQuarters(QGuiApplication::clipboard()->image()); }));
    Run(kCmdPause);
    chosenPath = folder.filePath(QStringLiteral("shot.png"));
    Run(kCmdSavePicture);
    EXPECT_TRUE(PumpUntil([this] { return Status() == QStringLiteral("Picture saved."); }));
    EXPECT_TRUE(isQuarters(QImage(chosenPath)));
    Run(kCmdStop);
    EXPECT_EQ(Output().windowTitle(), QStringLiteral("Shader Output"));
}

TEST_F(PictureTest, OutputWindowsComeAndGoWhileProjectsPlay) {
    ReplaceText(QStringLiteral("void mainImage(out vec4 c, in vec2 p) { c = vec4(1, 0, 0, 1); }"));
    double settledMiB = 0;
    for (int i = 0; i < 50; ++i) {
        if (i % 5 == 0) {
            ASSERT_TRUE(PlayUntilRunning()) << i;
            ASSERT_TRUE(PumpUntil([this] { return Screenshot().pixelColor(30, 30) == QColor(Qt::red); }))
                << i;
        }
        Run(kCmdAnimationWindow);
        EXPECT_EQ(OutputFrame(), nullptr);
        QCoreApplication::processEvents();
        Run(kCmdAnimationWindow);
        ASSERT_NE(OutputFrame(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(OutputFrame()));
        if (i % 5 == 4) {
            Run(kCmdStop);
            EXPECT_EQ(player.currentRun, nullptr);
        }
        if (i == 19) settledMiB = test::ResidentMiB();
    }
    if (!test::kMemoryIsMeasurable) return;
    EXPECT_LT(test::ResidentMiB() - settledMiB, 12.0);
}

TEST_F(PictureTest, TheMenuRecordsFramesAndTheCaptionShowsHowMuch) {
    settings.recorder.method = 1;
    *Hold(*settings.recorder.framePath) = {folder.path(), QStringLiteral("f-%d.png")};
    App()->run->recordWidth = App()->run->recordHeight = 20;
    App()->run->recordFrameDelayMs = 10;
    const QString plain = Output().windowTitle();
    const auto isPercent = [this] { return Output().windowTitle().endsWith(u'%'); };
    for (const auto& [entry, frames] :
         {std::pair(kCmdRecordFor10s, 600u), std::pair(kCmdRecordFor60s, 3600u),
          std::pair(kCmdRecordManualStop, kManualStopFrames), std::pair(kCmdRecordFor20s, 1200u)}) {
        Run(entry);
        EXPECT_EQ(App()->run->recordFrameTotal, frames);
        Run(kCmdRecordFor30s);
        EXPECT_EQ(App()->run->recordingActive, 0u);
    }
    Run(kCmdRecordFor10s);
    ASSERT_TRUE(PlayUntilRunning());
    ASSERT_TRUE(PumpUntil(isPercent));
    EXPECT_TRUE(Output().windowTitle().startsWith(plain + QStringLiteral(" - ")));
    Output().close();
    ASSERT_TRUE(PumpUntil([this] { return !OutputFrame(); }));
    OpenOutput();
    ASSERT_TRUE(PumpUntil(isPercent)) << "of a window opened meanwhile too";
    settings.recorder.method = 0;
    Run(kCmdRecordManualStop);
    EXPECT_TRUE(PumpUntil([&] { return !isPercent(); })) << "ended, though another recorder is chosen by now";
    settings.recorder.method = 1;
    Run(kCmdRecordFor10s);
    ASSERT_TRUE(PumpUntil(isPercent));
    Run(kCmdStop);
    EXPECT_EQ(Output().windowTitle(), plain);
}

TEST_F(PictureTest, AShaderThatHangsLeavesTheWindowsAnswering) {
    ReplaceText(kDoubling);
    ASSERT_TRUE(PlayUntilRunning());
    player.currentRun->stopWaitMs = 100;
    // The frame after one that took so long takes over a second.
    QElapsedTimer frameTime;
    uint64_t drawn = 0;
    ASSERT_TRUE(PumpUntil([&] {
        const uint64_t now = player.currentRun->framesDrawn;
        if (now == drawn) return false;
        const bool isLong = drawn > 0 && frameTime.elapsed() > 700;
        frameTime.restart();
        drawn = now;
        return isLong;
    }));
    Click("stopButton");
    EXPECT_EQ(Enabled(), QStringLiteral("PR"));
    EXPECT_EQ(AbandonedRuns(), 1);
    ReplaceText(kQuarters);
    Run(kCmdPlay);
    // A driver that draws on the processor finishes the heavy frame first; until then the windows answer.
    int turns = 0;
    for (; AbandonedRuns() > 0; ++turns)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    EXPECT_GT(turns, 20);
    EXPECT_TRUE(PumpUntil([this] { return ShowsQuarters({640, 360}); })) << "the next project plays";
    Run(kCmdStop);
}

}  // namespace
}  // namespace pixelgrove
