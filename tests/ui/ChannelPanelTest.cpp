// The channel groups of the main window: what they show, what their controls and menus write, and what of it
// reaches a run.
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QMenu>

#include "OutputFixture.h"
#include "shadertoy/ProjectFile.h"
#include "support/Drops.h"
#include "support/ImageTestSupport.h"
#include "ui/channels/ChannelMenu.h"
#include "ui/channels/ChannelThumbnail.h"

namespace pixelgrove {
namespace {

class ChannelPanelTest : public OutputTest {
  protected:
    ChannelInput& Channel(int index = 0, uint32_t stage = kStageImage) {
        return App()->project.channels[stage][size_t(index)];
    }
    QWidget* Part(const char* name, int channel = 0) const {
        return Control<QWidget>((std::string(name) + std::to_string(channel)).c_str());
    }
    QComboBox* Combo(const char* name) const { return static_cast<QComboBox*>(Part(name)); }
    ChannelThumbnail* Thumbnail() const { return static_cast<ChannelThumbnail*>(Part("channelThumbnail")); }
    QImage Shown() const { return Thumbnail()->grab().toImage(); }
    QString Name(int channel = 0) const { return Part("channelName", channel)->property("text").toString(); }
    // As a user's choice in the open list.
    static void Choose(QComboBox* combo, int index) {
        combo->setCurrentIndex(index);
        Q_EMIT combo->activated(index);
    }
    bool RunEntry(int entryId) {
        const bool done = RunChannelMenu(entryId, Channel(), window->Projects().dialogs);
        window->RefreshChannelPanel();
        return done;
    }
    // A picture that is red above and blue below.
    QString PictureFile(const QString& name = QStringLiteral("picture.png")) {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(Qt::blue);
        std::fill_n(reinterpret_cast<QRgb*>(image.bits()), 32 * 64, 0xffff0000u);
        QString path = folder.filePath(name);
        EXPECT_TRUE(image.save(path));
        return path;
    }
    // The first channel of the project that is saved now.
    ChannelInput SavedChannel() {
        chosenPath = folder.filePath(QStringLiteral("saved.json"));
        Run(kCmdSaveProjectAs);
        ShaderProject project;
        EXPECT_EQ(LoadProjectFile(chosenPath, project).status, ProjectFileStatus::Loaded);
        return project.stages[kStageImage].channels[0];
    }
};

TEST_F(ChannelPanelTest, GroupsShowWhatTheShownStageReads) {
    for (const char* part : {"channelButton", "channelThumbnail", "channelName"})
        EXPECT_TRUE(Part(part, 3)->isVisible()) << part;
    constexpr const char* kSampling[] = {"filterLabel", "filterCombo", "wrapLabel", "wrapCombo",
                                         "vflipCheck"};
    for (const char* part : kSampling)
        EXPECT_FALSE(Part(part)->isVisible()) << part;
    EXPECT_EQ(Name(), QStringLiteral("Unused"));

    const struct {
        uint32_t kind;
        int32_t source;
        const char* name;
    } rows[] = {{kChannelTexture, -1, "Texture"},
                {kChannelBuffer, kStageBufferC, "Buffer C"},
                {kChannelCubeA, kStageCubeA, "Cube A"},
                {kChannelAudio, -1, "Audio"}};
    for (const auto& row : rows) {
        Channel() = ChannelInput();
        Channel().kind = row.kind;
        DefaultSampler(Channel());
        Channel().sourceStage = row.source;
        window->RefreshChannelPanel();
        EXPECT_EQ(Name(), QString::fromLatin1(row.name));
        for (const char* part : kSampling)
            EXPECT_TRUE(Part(part)->isVisible()) << row.name << part;
        EXPECT_EQ(Combo("filterCombo")->currentData().toUInt(), Channel().filter) << row.name;
        EXPECT_EQ(Combo("wrapCombo")->currentData().toUInt(), Channel().wrap) << row.name;
        EXPECT_EQ(static_cast<QCheckBox*>(Part("vflipCheck"))->isChecked(), Channel().vflip != 0) << row.name;
    }
    // A value without an entry leaves the combo as it is, and is itself left alone.
    Choose(Combo("filterCombo"), 2);
    Channel().filter = 0;
    window->RefreshChannelPanel();
    EXPECT_EQ(Combo("filterCombo")->currentIndex(), 2);
    EXPECT_EQ(Channel().filter, 0u);

    AddStage(App()->project, kStageCommon);
    SelectStage(App()->project, kStageCommon);
    for (const char* part : {"channelButton", "channelThumbnail", "channelName", "filterCombo", "vflipCheck"})
        EXPECT_FALSE(Part(part)->isVisible()) << part;
    SelectStage(App()->project, kStageImage);
    EXPECT_TRUE(Part("filterCombo")->isVisible() && !Part("filterCombo", 1)->isVisible());
}

TEST_F(ChannelPanelTest, ControlsWriteTheShownStagesChannel) {
    AddStage(App()->project, kStageBufferB);
    SelectStage(App()->project, kStageBufferB);
    ChannelInput& channel = Channel(0, kStageBufferB);
    channel.kind = kChannelKeyboard;
    DefaultSampler(channel);
    window->RefreshChannelPanel();
    channel.samplerCountdown = 0;
    MarkProjectSaved(App()->project);
    Choose(Combo("filterCombo"), 0);
    EXPECT_TRUE(Title().startsWith(u'*'));
    Choose(Combo("filterCombo"), 1);
    EXPECT_FALSE(Title().startsWith(u'*')) << "back at what was saved";
    Choose(Combo("filterCombo"), 0);
    Choose(Combo("wrapCombo"), 1);
    static_cast<QCheckBox*>(Part("vflipCheck"))->click();
    EXPECT_EQ(channel.filter, gl::kNearest);
    EXPECT_EQ(channel.wrap, gl::kRepeat);
    EXPECT_EQ(channel.vflip, 1u);
    EXPECT_EQ(channel.samplerCountdown, 2u);
    Choose(Combo("filterCombo"), -1);
    EXPECT_EQ(channel.filter, 0xFFFFFFFFu);
    EXPECT_EQ(Channel().kind, uint32_t(kChannelUnused));
}

TEST_F(ChannelPanelTest, TheButtonsMenuGivesTheChannelItsSource) {
    const auto entries = [](const QMenu& menu) {
        QString texts;
        for (const QAction* action : menu.actions())
            texts += action->text() + QString::number(action->data().toInt()) + u'|';
        return texts;
    };
    const auto open = [this] {
        Click("channelButton2");
        return Control<QMenu>("channelMenu");
    };
    QMenu* menu = open();
    EXPECT_EQ(entries(*menu), QStringLiteral("Misc0|Texture...106|Cubemap...124|Volume...125|"));
    QMenu* live = menu->actions()[0]->menu();
    EXPECT_EQ(entries(*live), QStringLiteral("Buffer A102|Buffer B103|Buffer C104|Buffer D105|Cubemap A129|"
                                             "Keyboard123|Webcam128|Audio127|"));
    live->actions()[1]->trigger();
    menu->close();
    PumpFor(20);
    EXPECT_EQ(Channel(2).kind, uint32_t(kChannelBuffer));
    EXPECT_EQ(Channel(2).sourceStage, kStageBufferB);
    EXPECT_EQ(Name(2), QStringLiteral("Buffer B"));
    EXPECT_TRUE(Title().startsWith(u'*'));

    menu = open();
    EXPECT_TRUE(entries(*menu).startsWith(QStringLiteral("Reset Channel114|0|Misc0|")));
    menu->actions()[0]->trigger();
    menu->close();
    EXPECT_EQ(Channel(2).kind, uint32_t(kChannelUnused));
    EXPECT_EQ(Name(2), QStringLiteral("Unused"));
    EXPECT_FALSE(Title().startsWith(u'*'));
}

TEST_F(ChannelPanelTest, PicturesAreChosenByTheirFiles) {
    EXPECT_FALSE(RunEntry(kChannelMenuTexture)) << "cancelled";
    const QString picture = PictureFile(QString::fromUtf8("写真 ü%1 \"x\".png"));
    chosenPath = picture;
    ASSERT_TRUE(RunEntry(kChannelMenuTexture));
    EXPECT_EQ(fileQuestion.caption, QStringLiteral("Open Image"));
    EXPECT_TRUE(fileQuestion.folder.endsWith(QStringLiteral("ShaderToy/ShadertoyCache")))
        << qPrintable(fileQuestion.folder);
    EXPECT_EQ(Channel().kind, uint32_t(kChannelTexture));
    EXPECT_EQ(Channel().fileName, picture);
    EXPECT_EQ(Channel().wrap, gl::kMirroredRepeat);
    EXPECT_EQ(Channel().filter, gl::kLinearMipmapLinear);
    EXPECT_EQ(Channel().vflip, 1u);
    const ChannelInput saved = SavedChannel();
    EXPECT_EQ(saved.fileName, picture);
    EXPECT_NE(saved.faces[0], nullptr);

    // A wrong file for the same kind: the kind stays, without a picture.
    chosenPath = FileWith("no picture", QStringLiteral("png"));
    ASSERT_TRUE(RunEntry(kChannelMenuTexture));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelTexture));
    EXPECT_EQ(Channel().fileName, chosenPath);
    EXPECT_EQ(Channel().faces[0], nullptr);
    EXPECT_EQ(Shown().pixel(5, 5), 0xffd3d3d3u);
    // For another kind: Unused, with the name.
    ASSERT_TRUE(RunEntry(kChannelMenuCubemap));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelUnused));
    EXPECT_EQ(Channel().fileName, chosenPath);

    chosenPath = PictureFile();
    for (int n = 1; n < 6; ++n)
        PictureFile(QStringLiteral("picture_%1.png").arg(n));
    ASSERT_TRUE(RunEntry(kChannelMenuCubemap));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelCubemap));
    EXPECT_EQ(Channel().wrap, gl::kClampToEdge);
    for (const BitmapRef& face : Channel().faces)
        EXPECT_NE(face, nullptr);
}

TEST_F(ChannelPanelTest, ThePictureTakesClicksAndDrops) {
    const auto drop = [this](const QString& path) {
        EXPECT_EQ(test::DropFiles(Thumbnail(), {path}), Qt::CopyAction);
    };
    QStringList problems;
    window->Projects().dialogs.inform = [&problems](QWidget&, const QString&, const QString& text) {
        problems.append(text);
    };
    drop(PictureFile());
    EXPECT_EQ(Channel().kind, kChannelTexture);
    EXPECT_TRUE(Title().startsWith(u'*'));
    drop(FileWith("no picture", QStringLiteral("png")));
    EXPECT_EQ(problems.size(), 1);
    EXPECT_EQ(Channel().kind, kChannelTexture) << "what can't be read changes nothing";
    EXPECT_TRUE(Channel().faces[0]);

    QTest::mouseClick(Thumbnail(), Qt::LeftButton);
    auto* menu = window->findChild<QMenu*>(QStringLiteral("channelMenu"));
    ASSERT_NE(menu, nullptr);
    menu->close();
}

TEST_F(ChannelPanelTest, AVolumeFillsOnlyAnUnusedChannel) {
    const QByteArray volume("BIN\0\1\0\0\0\1\0\0\0\1\0\0\0\1\0\0\0\x7f", 21);
    chosenPath = FileWith(volume, QStringLiteral("bin"));
    ASSERT_TRUE(RunEntry(kChannelMenuVolume));
    EXPECT_TRUE(fileQuestion.folder.endsWith(QStringLiteral("/Assets")));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelVolume));
    EXPECT_EQ(Channel().fileName, chosenPath);
    EXPECT_EQ(Channel().filter, gl::kLinearMipmapLinear);
    EXPECT_EQ(Channel().wrap, gl::kMirroredRepeat);
    EXPECT_EQ(Combo("filterCombo")->currentIndex(), 2);
    ASSERT_NE(Channel().volumeData, nullptr);
    // The name goes with what the channel held.
    ASSERT_TRUE(RunEntry(kChannelMenuVolume));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelUnused));
    EXPECT_TRUE(Channel().fileName.isEmpty() && !Channel().volumeData);
    ASSERT_TRUE(RunEntry(kChannelMenuVolume));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelVolume));
    ASSERT_TRUE(RunEntry(kChannelMenuReset));
    chosenPath = FileWith("BUN, and long enough for a header", QStringLiteral("bin"));
    ASSERT_TRUE(RunEntry(kChannelMenuVolume));
    EXPECT_EQ(Channel().kind, uint32_t(kChannelUnused));
}

TEST_F(ChannelPanelTest, ThumbnailsArePaintedByKind) {
    chosenPath = PictureFile();
    ASSERT_TRUE(RunEntry(kChannelMenuTexture));
    EXPECT_EQ(Shown().pixelColor(9, 3), QColor(Qt::red)) << "upright, whatever the flip";
    EXPECT_EQ(Shown().pixelColor(9, 70), QColor(Qt::blue));
    QImage before = Shown();
    for (const int id : {102, 103, 129, 123, 128, 127}) {
        ASSERT_TRUE(RunEntry(id));
        EXPECT_NE(Shown(), before) << id;
        before = Shown();
    }
}

class ChannelRunTest : public ChannelPanelTest {
  protected:
    void SetUp() override {
        ChannelPanelTest::SetUp();
        if (!App()) return;
        if (!App()->display.openGlOk) GTEST_SKIP() << "no usable OpenGL on this display";
        OpenOutput();
    }
    // The colour in the upper half of the output window.
    bool ShowsAbove(const QColor& colour) const {
        return PumpUntil([&] {
            const QImage shot = Screenshot();
            return shot.pixelColor(shot.width() / 2, shot.height() / 4) == colour;
        });
    }
};

TEST_F(ChannelRunTest, FlipAndFilterReachTheRunningShaderAndItsFile) {
    chosenPath = PictureFile();
    ASSERT_TRUE(RunEntry(kChannelMenuTexture));
    ReplaceText(
        QStringLiteral("void mainImage(out vec4 c, in vec2 p) {\n"
                       "  c = texture(iChannel0, p / iResolution.xy);\n}\n"));
    ASSERT_TRUE(PlayUntilRunning());
    ASSERT_TRUE(ShowsAbove(Qt::red));
    static_cast<QCheckBox*>(Part("vflipCheck"))->click();
    EXPECT_TRUE(ShowsAbove(Qt::blue));
    Choose(Combo("filterCombo"), 0);
    const ChannelInput saved = SavedChannel();
    EXPECT_EQ(saved.vflip, 0u);
    EXPECT_EQ(saved.filter, gl::kNearest);
    // A new source waits for the next Play.
    ASSERT_TRUE(RunEntry(kChannelMenuReset));
    PumpFor(100);
    EXPECT_TRUE(ShowsAbove(Qt::blue));
}

TEST_F(ChannelRunTest, PreviewsComeAndGoWithTheRun) {
    AddStage(App()->project, kStageBufferA);
    AddStage(App()->project, kStageBufferB);
    SetDocumentText(App()->project.documents[kStageBufferA],
                    QStringLiteral("void mainImage(out vec4 c, in vec2 p) { c = vec4(1, 0, 1, 1); }"));
    ASSERT_TRUE(RunEntry(kChannelMenuBufferA));
    const QImage letter = Shown();
    Run(kCmdShowChannelBuffers);
    ASSERT_TRUE(PlayUntilRunning());
    const auto isLetter = [&] { return Shown() == letter; };
    const auto isMagenta = [this] { return Shown().pixelColor(9, 9) == QColor(Qt::magenta); };
    EXPECT_TRUE(PumpUntil(isMagenta));
    Run(kCmdShowChannelBuffers);
    EXPECT_TRUE(isLetter());
    Run(kCmdShowChannelBuffers);
    EXPECT_TRUE(PumpUntil(isMagenta));
    // Another stage's channels are not those of Image, whatever is under way of them.
    QImage green(2, 2, QImage::Format_RGB32);
    green.fill(Qt::green);
    for (int i = 0; i < 10; ++i) {
        player.currentRun->showPreview({0, FromImage(green, 32, false), kStageBufferB});
        QCoreApplication::sendPostedEvents();
        ASSERT_NE(Shown().pixelColor(9, 9), QColor(Qt::green));
    }
    SelectStage(App()->project, kStageBufferB);
    EXPECT_FALSE(Thumbnail()->HasPreview());
    SelectStage(App()->project, kStageImage);
    EXPECT_TRUE(isLetter());
    EXPECT_TRUE(PumpUntil(isMagenta));
    Run(kCmdStop);
    EXPECT_TRUE(isLetter());
    PumpFor(50);
    EXPECT_TRUE(isLetter()) << "a preview that was under way comes too late";
}

}  // namespace
}  // namespace pixelgrove
