// A tone on a sound server, to the pixels of a shader that reads the sound channel, with all on the way
// running: capture, analysis, the audio window and the run.
#include <algorithm>
#include <optional>

#include "OutputFixture.h"
#include "capture/AudioCapture.h"
#include "media/LiveFeeds.h"
#include "support/SoundServer.h"

namespace pixelgrove {
namespace {

class SoundPictureTest : public OutputTest {
  protected:
    void TearDown() override {
        StopAudioCapture();
        OutputTest::TearDown();
    }
    // Whether the brightest column is that of the tone, in a picture as wide as the texture.
    bool ShowsBar(double frequency) const {
        const QImage shot = Screenshot();
        if (shot.width() != kAudioColumns) return false;
        const int column = int(frequency * kAudioColumns / 20000 + 0.5);
        int brightest = 0;
        for (int x = 0; x < shot.width(); ++x)
            if (qGreen(shot.pixel(x, 40)) > qGreen(shot.pixel(brightest, 40))) brightest = x;
        return std::abs(brightest - column) <= 3 && qGreen(shot.pixel(brightest, 40)) > 200 &&
               qGreen(shot.pixel(brightest - 40, 40)) < 150;
    }
    // Whether the picture is that of the latest block.
    bool ShowsLatest() const {
        const QImage shot = Screenshot();
        const AudioBlock rows = LatestAudioBlock();
        for (int x = 0; x < shot.width(); ++x)
            if (std::abs(qGreen(shot.pixel(x, 40)) - rows[size_t(x)]) > 3) return false;
        return shot.width() == kAudioColumns;
    }
};

TEST_F(SoundPictureTest, AToneStandsInItsColumnOfThePicture) {
    std::optional<test::SoundServer> server(std::in_place, "format=s16le rate=48000 channels=2");
    if (!server->IsInstalled()) GTEST_SKIP() << "skipped: pulseaudio is not installed";
    ASSERT_TRUE(server->IsReady());
    const auto parameters = std::make_shared<AudioParameters>();
    parameters->smoothingWeight = 0;
    parameters->homingFactor = 0.9;
    PublishAudioBlock({});
    ASSERT_TRUE(StartAudioCapture(parameters));
    OpenOutput();
    Output().ResizeClient({kAudioColumns, 80});
    Run(kCmdAudioConfiguration);
    FrameWindow& audioWindow = *Windows().Find(kAudioConfigWin);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&audioWindow));
    audioWindow.SetFrameRect({8, 500, 850, 880});  // not over the picture
    ASSERT_TRUE(PumpUntil([&audioWindow] { return audioWindow.IsSettled(); }));
    Output().raise();
    ChannelInput& channel = App()->project.channels[kStageImage][0];
    channel.kind = kChannelAudio;
    ASSERT_TRUE(DefaultSampler(channel));
    ReplaceText(
        QStringLiteral("void mainImage(out vec4 c, in vec2 p) {\n"
                       "  c = vec4(texture(iChannel0, vec2(p.x / iResolution.x, 0.25)).x);\n}\n"));
    ASSERT_TRUE(PlayUntilRunning());
    for (const double frequency : {5000.0, 15000.0}) {
        const test::Child tone = server->Play(frequency, 15);
        EXPECT_TRUE(PumpUntil([&] { return ShowsBar(frequency); })) << frequency;
    }
    const test::Child tone = server->Play(9000, 15);
    EXPECT_TRUE(PumpUntil([this] { return ShowsBar(9000); }));
    server.reset();
    EXPECT_TRUE(PumpUntil([] { return LatestSoundReport().state == SoundState::Lost; }));
    EXPECT_TRUE(PumpUntil([this] { return ShowsLatest(); })) << "what was heard last stays";
    EXPECT_TRUE(Control<QPushButton>("stopButton")->isEnabled()) << "the run goes on";
}

}  // namespace
}  // namespace pixelgrove
