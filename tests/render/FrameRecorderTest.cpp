// Recordings as a user makes them: to their end, ended, stopped, with files that can't be written.
#include "render/FrameRecorder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "render/RunFixture.h"
#include "support/HangingSurface.h"

namespace pixelgrove {
namespace {

using namespace Qt::StringLiterals;

class Recording : public test::Run {
  protected:
    void SetUp() override {
        Run::SetUp();
        // Which frame it is, and where in it the pixel stands.
        SetText(kStageImage,
                "void mainImage(out vec4 c, in vec2 p) {"
                "  c = vec4(float(iFrame % 256), float(iFrame / 256), p.x + 16.0 * p.y, 255.0) / 255.0; }");
        UsePath(dir_.filePath(u"take"_s), u"f-%d.png"_s);
        Asked().recordWidth = 16;
        Asked().recordHeight = 9;
        Asked().recordFrameIndex = 1;
    }
    static RunControls& Asked() { return *App()->run; }
    void UsePath(const QString& folder, const QString& format) {
        *Hold(*path_) = {folder, format};
        framePath_ = path_;
    }
    void Play() {
        ASSERT_TRUE(Toggle());
        ASSERT_EQ(WaitResult(), 0);
    }
    // Until no recording is asked for, and the frames have the window's size again.
    static bool WaitEnd() {
        return WaitUntil([] { return Asked().recordingActive == 0; });
    }
    QString File(uint32_t number) const { return dir_.filePath(u"take/f-%1.png"_s.arg(number)); }
    QStringList Files() const {
        return QDir(dir_.filePath(u"take"_s)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    static bool IsFrame(const QImage& image, uint32_t number) {
        // The two first frames after a change of size have iFrame 0.
        const int count = int(number < 2 ? 0 : number - 2);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const double place = x + 0.5 + 16.0 * (image.height() - 1 - y + 0.5);
                const QRgb pixel = image.pixel(x, y);
                if (qRed(pixel) != count % 256 || qGreen(pixel) != count / 256 ||
                    std::abs(qBlue(pixel) - place) > 1)
                    return false;
            }
        return !image.isNull();
    }

    QTemporaryDir dir_;
    std::shared_ptr<SharedFramePath> path_ = std::make_shared<SharedFramePath>();
};

TEST_F(Recording, TenSecondsAreSixHundredFilesInAFolderThatIsMade) {
    Play();
    SetRecordingState(*App(), 10);
    ASSERT_TRUE(WaitEnd());
    EXPECT_EQ(Files().size(), 600);
    for (uint32_t number = 1; number <= 600; ++number) {
        const QImage image(File(number));
        ASSERT_EQ(image.size(), QSize(16, 9)) << number;
        ASSERT_TRUE(IsFrame(image, number)) << number;
    }
    EXPECT_EQ(Asked().recordFrameTotal, 0u);
    EXPECT_EQ(Asked().recordFrameIndex, 601u);
    const uint64_t drawn = player_.currentRun->framesDrawn;
    EXPECT_TRUE(WaitFrames(drawn + 3)) << "the run goes on";
    const QStringList texts = host_.TakeTexts();
    ASSERT_EQ(texts.size(), 601);
    EXPECT_EQ(texts[0], u"Preparing to record..."_s);
    for (int i = 1; i < 600; ++i)
        EXPECT_EQ(texts[i], u"Recording frame %1 of 600"_s.arg(i + 1));
    EXPECT_EQ(texts[600], u"Recording complete: 600 frames."_s);
    EXPECT_EQ(Files().size(), 600);
}

TEST_F(Recording, AnyEntryEndsItAndTheNextBeginsAtOne) {
    SetRecordingState(*App(), kManualStopSeconds);
    Play();
    ASSERT_TRUE(WaitUntil([] { return Asked().recordFrameIndex > 20; }));
    EXPECT_FALSE(RecordedPercent(Asked()));
    // The rest of a frame that is on its way to its file ends too.
    Asked().recordFrameDelayMs = 10'000;
    const uint32_t before = Asked().recordFrameIndex;
    ASSERT_TRUE(WaitUntil([=] { return Asked().recordFrameIndex > before; }));
    SetRecordingState(*App(), 10);
    const uint32_t written = Asked().recordFrameIndex - 1;
    ASSERT_TRUE(WaitUntil([&] { return QFile::exists(File(written)); }));
    Asked().recordFrameDelayMs = 0;
    SetRecordingState(*App(), 1);
    ASSERT_TRUE(WaitEnd());
    EXPECT_EQ(Asked().recordFrameIndex, 61u);
    EXPECT_EQ(uint32_t(Files().size()), std::max(written, 60u));
    const QStringList texts = host_.TakeTexts();
    EXPECT_TRUE(texts.contains(u"Recording frame 2 (manual stop)"_s));
    const qsizetype end = texts.indexOf(u"Recording complete: %1 frames."_s.arg(written));
    ASSERT_GT(end, 0);
    EXPECT_EQ(texts.value(end + 1), u"Preparing to record..."_s);
    EXPECT_EQ(texts.last(), u"Recording complete: 60 frames."_s);
}

TEST_F(Recording, TheRecordButtonTakesOneFrameAtATime) {
    Play();
    for (uint32_t number = 1; number <= 3; ++number) {
        ToggleFrameCapture(Asked());
        ASSERT_TRUE(WaitEnd());
        EXPECT_EQ(uint32_t(Files().size()), number);
        EXPECT_EQ(host_.TakeTexts(), QStringList(u"Recording complete: %1 frames."_s.arg(number)));
    }
    SetRecordingState(*App(), 60);
    ASSERT_TRUE(WaitUntil([] { return RecordedPercent(Asked()) == 1; }));
    ToggleFrameCapture(Asked());
    ASSERT_TRUE(WaitFrames(player_.currentRun->framesDrawn + 3));
    EXPECT_FALSE(host_.TakeTexts().last().startsWith(u"Recording complete"_s));
}

TEST_F(Recording, LostFramesAreToldAndTheRecordingGoesOn) {
    for (const char* name : {"take/f-7.png", "take/f-9.png"})
        ASSERT_TRUE(QDir(dir_.path()).mkpath(QString::fromLatin1(name)));
    Play();
    SetRecordingState(*App(), 1);
    ASSERT_TRUE(WaitEnd());
    EXPECT_EQ(Files().size(), 58);
    const QStringList texts = host_.TakeTexts();
    const QString trouble =
        u"Frame 7 could not be saved.\n\"%1\": Is a directory"_s.arg(dir_.filePath(u"take/f-7.png"_s));
    EXPECT_EQ(texts.value(6), u"Recording frame 7 of 60"_s);
    EXPECT_EQ(texts.value(7), u"Recording frame 8 of 60\n"_s + trouble);
    EXPECT_EQ(texts.last(), u"Recording complete: 60 frames.\n2 of them could not be saved.\n"_s + trouble);
}

TEST_F(Recording, AFormatWithoutAPathHoldsTheNumber) {
    UsePath(dir_.path(), u"f-%s.png"_s);
    const QString trouble =
        u"Recording frame 1 of 60\nFrame 1 could not be saved.\nThe filename format gives no path."_s;
    Play();
    SetRecordingState(*App(), 1);
    ASSERT_TRUE(WaitUntil([&] { return host_.TakeTexts().contains(trouble); }));
    EXPECT_EQ(Asked().recordFrameIndex, 1u);
    UsePath(dir_.filePath(u"take"_s), u"f-%d.png"_s);
    ASSERT_TRUE(WaitEnd());
    EXPECT_EQ(Files().size(), 60);
}

TEST_F(Recording, ARecordingKeepsItsSize) {
    Play();
    SetRecordingState(*App(), 2);
    ASSERT_TRUE(WaitUntil([] { return Asked().recordFrameIndex > 10; }));
    Asked().recordWidth = 32;
    surface_->Resize({0, 0});
    ASSERT_TRUE(WaitEnd());
    EXPECT_EQ(QImage(File(120)).size(), QSize(16, 9));
    EXPECT_EQ(host_.beeps, 0);
}

TEST_F(Recording, StopLetsAFileBecomeWholeAndCutsARestShort) {
    Asked().recordWidth = 3000;
    Asked().recordHeight = 2000;
    Play();
    player_.currentRun->stopWaitMs = 1;
    SetRecordingState(*App(), kManualStopSeconds);
    ASSERT_TRUE(WaitUntil([this] { return player_.currentRun->isSavingFrame.load(); }));
    EXPECT_TRUE(StopRenderThread(*App(), player_));
    EXPECT_EQ(Files(), QStringList(u"f-1.png"_s));
    EXPECT_EQ(QImage(File(1)).size(), QSize(3000, 2000));
    EXPECT_EQ(Asked().recordingActive, 0u);
    EXPECT_EQ(Asked().recordFrameTotal, 0u) << "the Record button takes one frame";

    Asked().recordWidth = 16;
    Asked().recordFrameDelayMs = 10'000;
    SetRecordingState(*App(), kManualStopSeconds);
    Play();
    ASSERT_TRUE(WaitUntil([] { return Asked().recordFrameIndex == 2; }));
    const uint64_t start = TickCountMs();
    EXPECT_TRUE(StopRenderThread(*App(), player_));
    EXPECT_LT(TickCountMs() - start, 5000u);
    EXPECT_EQ(QImage(File(1)).width(), 16);
}

TEST_F(Recording, AScreenCaptureIsWrittenWhenItIsAskedForAgainMeanwhile) {
    const auto hanging = std::make_shared<test::HangingSurface>(test::HangingSurface::In::Frame);
    hanging->Release();
    surface_ = hanging;
    Play();
    Asked().captureRequested = 1;
    ASSERT_TRUE(WaitUntil([] { return Asked().captureRequested == 0; }));
    ASSERT_TRUE(WaitFrames(player_.currentRun->framesDrawn + 3));
    EXPECT_TRUE(Files().isEmpty());
    StopRenderThread(*App(), player_);

    const auto second = std::make_shared<test::HangingSurface>(test::HangingSurface::In::Frame);
    surface_ = second;
    Asked().useGdiDisplay = 1;
    Asked().captureRequested = 1;
    Play();
    ASSERT_TRUE(WaitUntil([&] { return second->IsHanging(); }));
    Asked().captureRequested = 1;
    second->Release();
    ASSERT_TRUE(WaitFrames(3));
    ASSERT_EQ(Files().size(), 1);
    EXPECT_EQ(QImage(dir_.filePath(u"take/"_s + Files().first())).size(), QSize(16, 9));
    EXPECT_EQ(Asked().recordFrameIndex, 1u);
}

}  // namespace
}  // namespace pixelgrove
