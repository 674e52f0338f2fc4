// The window "Audio Configuration": what it sets, what it draws, and when it doesn't.
#include "audio/widgets/AudioWindow.h"

#include <QCheckBox>
#include <QSlider>
#include <algorithm>

#include "WindowFixture.h"
#include "audio/widgets/SpectrumView.h"
#include "media/LiveFeeds.h"

namespace pixelgrove {
namespace {

class AudioWindowTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        PublishAudioBlock({});
        PublishSoundState(SoundState::None);
    }
    void Open() {
        Run(kCmdAudioConfiguration);
        ASSERT_NE(Frame(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(Frame()));
    }
    static FrameWindow* Frame() { return Windows().Find(kAudioConfigWin); }
    template <typename W>
    static W& Part(const char* name) {
        return *Frame()->findChild<W*>(QString::fromLatin1(name));
    }
    static QString State() { return Part<QLabel>("stateLabel").text(); }
    static bool ShowsSoon(const QString& state) {
        return PumpUntil([&state] { return State() == state; });
    }
};

// A level for each column, and a wave.
AudioBlock Rows() {
    AudioBlock rows;
    for (size_t i = 0; i < kAudioColumns; ++i) {
        rows[i] = uint8_t(i * 7);
        rows[kAudioColumns + i] = uint8_t(255 - i / 2);
    }
    return rows;
}

class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int paints = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

TEST_F(AudioWindowTest, EachControlSetsItsParameterAtOnceAndNothingElse) {
    AudioParameters& audio = settings.audio;
    audio.noiseLevel = 77;
    audio.homingFactor = 0.5;
    Open();
    EXPECT_EQ(Part<QSlider>("sensitivitySlider").value(), 8);
    EXPECT_EQ(Part<QSlider>("noiseSlider").value(), 6);
    EXPECT_EQ(Part<QSlider>("homingSlider").value(), 8024);
    EXPECT_TRUE(audio.noiseLevel == 77 && audio.homingFactor == 0.5) << "what wasn't moved stays";

    QTest::keyClick(&Part<QSlider>("sensitivitySlider"), Qt::Key_PageUp);
    EXPECT_EQ(audio.smoothingWeight, 24);
    QTest::keyClick(&Part<QSlider>("sensitivitySlider"), Qt::Key_End);
    EXPECT_EQ(audio.smoothingWeight, 128);
    QTest::keyClick(&Part<QSlider>("homingSlider"), Qt::Key_PageUp);
    EXPECT_EQ(audio.homingFactor, 8056 / 8192.0);
    QTest::keyClick(&Part<QSlider>("homingSlider"), Qt::Key_End);
    EXPECT_EQ(audio.homingFactor, 1.0);
    QTest::keyClick(&Part<QSlider>("noiseSlider"), Qt::Key_Left);
    EXPECT_EQ(audio.noiseLevel, 5);
    QTest::mouseClick(&Part<QCheckBox>("maximizeBox"), Qt::LeftButton, {}, {8, 12});
    EXPECT_TRUE(audio.maximizeRange);

    audio.homingFactor = 0.999;
    const EdgeRect place{40, 60, 900, 420};
    Frame()->SetFrameRect(place);
    Run(kCmdAudioConfiguration);
    EXPECT_EQ(Frame(), nullptr);
    EXPECT_TRUE(audio.maximizeRange && audio.noiseLevel == 5) << "closing changes nothing";
    Open();
    EXPECT_EQ(Part<QSlider>("homingSlider").value(), 8183);
    EXPECT_TRUE(Part<QCheckBox>("maximizeBox").isChecked());
    EXPECT_EQ(Frame()->FrameRect(), place);
}

TEST_F(AudioWindowTest, TheToggleLeavesTheTextAlone) {
    ReplaceText(QStringLiteral("// kept"));
    for (int i = 0; i < 2; ++i) {
        Run(kCmdAudioConfiguration);
        EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("// kept"));
    }
}

TEST_F(AudioWindowTest, BarsAndLineStandWhereTheBytesSay) {
    SpectrumView view;
    view.setFrameShape(QFrame::NoFrame);
    const AudioBlock rows = Rows();
    view.Show(rows);
    for (const int factor : {1, 2}) {
        view.resize(512 * factor, 256 * factor);
        const QImage image = view.grab().toImage();
        ASSERT_EQ(image.size(), view.size());
        for (int x = 0; x < 512; ++x) {
            EXPECT_EQ(image.pixel(x * factor,
                                  rows[size_t(512 + x)] == 255 ? 0 : (255 - rows[size_t(512 + x)]) * factor),
                      0xffffffff)
                << x;
            for (const int y : {0, 60, 128, 200, 255}) {
                const int line = x / 2;
                if (std::abs(y - line) < 3) continue;
                const auto mixed = [y](int high, int low) { return ((255 - y) * high + y * low) / 255; };
                const QRgb bar = qRgb(mixed(0xfa, 0x50), mixed(0x50, 0xfa), 0x50);
                const QRgb expected = y >= 255 - rows[size_t(x)] ? bar : qRgb(0, 0, 0);
                ASSERT_EQ(image.pixel(x * factor, y * factor), expected) << x << ' ' << y;
            }
        }
    }
}

TEST_F(AudioWindowTest, ItSaysWhyNothingIsHeardAndPaintsOnlyWhatIsNew) {
    Open();
    EXPECT_TRUE(ShowsSoon(QStringLiteral("No sound output was found when the program started.")));
    PublishSoundState(SoundState::Listening);
    EXPECT_TRUE(ShowsSoon(QStringLiteral("Nothing is playing."))) << "silence";
    PublishAudioBlock(Rows());
    EXPECT_TRUE(ShowsSoon({}));
    PaintCounter counter(Part<SpectrumView>("spectrumView"));
    EXPECT_TRUE(ShowsSoon(QStringLiteral("Nothing is playing."))) << "no block for a while";
    EXPECT_EQ(counter.paints, 0) << "the same rows";
    PublishAudioBlock({});
    EXPECT_TRUE(PumpUntil([&counter] { return counter.paints == 1; }));
    PublishSoundState(SoundState::Lost);
    const auto lost = QStringLiteral("The sound output is gone. The next one is heard after a new start.");
    EXPECT_TRUE(ShowsSoon(lost));
    Frame()->hide();
    PublishAudioBlock(Rows());
    PublishSoundState(SoundState::Listening);
    PumpFor(100);
    EXPECT_EQ(State(), lost) << "nobody sees it";
    Frame()->show();
    EXPECT_TRUE(ShowsSoon({}));
}

}  // namespace
}  // namespace pixelgrove
