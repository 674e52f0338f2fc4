#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <limits>

#include "platform/Files.h"
#include "project/ProjectModel.h"
#include "recovery/RecoveryCopy.h"
#include "recovery/RecoveryFile.h"

namespace pixelgrove {
namespace {

class Recovery : public ::testing::Test {
  protected:
    QString At(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
    QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

    EditingForm project_;
    QTemporaryDir folder_;
};

TEST_F(Recovery, NothingOfAProjectIsLost) {
    QImage picture(6, 3, QImage::Format_RGB32);
    picture.fill(Qt::green);
    ASSERT_TRUE(picture.save(At("p.png")));
    ClearProject(project_, true);
    project_.documents[kStageImage].text = QStringLiteral("thrown away");
    OnStageChanged(project_, kStageImage);
    ClearProject(project_, true);
    AddStage(project_, kStageBufferB);
    // Beyond the code page, half a surrogate pair, a zero, and what JSON has to escape.
    const QString odd = QStringLiteral(u"// \u0416 \u4e2d \U0001F600 \xd800 \"\\\t\n") + QChar(0) + u'x';
    project_.documents[kStageImage].text = odd;
    project_.documents[kStageBufferB].text.clear();
    const auto set = [this](uint32_t stage, size_t index, ChannelInput channel) {
        project_.channels[stage][index] = std::move(channel);
    };
    ChannelInput textured{.kind = kChannelTexture, .fileName = At("p.png")};
    textured.Sampler() = {
        .wrap = gl::kMirroredRepeat, .filter = gl::kNearest, .vflip = 1, .srgb = 1, .internalFormat = 1};
    set(kStageImage, 0, std::move(textured));
    set(kStageImage, 3, {.kind = kChannelBuffer, .sourceStage = kStageBufferB});
    set(kStageBufferB, 1, {.kind = kChannelVolume, .fileName = At("gone.bin")});
    set(kStageCommon, 2, {.fileName = QStringLiteral("no picture, as its choice failed")});
    project_.projectInfo.name = QStringLiteral(u"\u0416");
    project_.projectInfo.likes = std::numeric_limits<uint32_t>::max();
    project_.projectVersion = 0.3f;
    project_.fileName = QStringLiteral("name.json");
    project_.projectFile = At("sub/own name.json");
    project_.currentStage = kStageBufferB;
    const auto channelsBefore = project_.channels;

    const QByteArray bytes = WriteRecoveryCopy(TakeRecoveryCopy(project_));
    ClearProject(project_, true);
    const std::optional<RecoveryCopy> copy = ReadRecoveryCopy(bytes);
    ASSERT_TRUE(copy);
    const QString unusable = ShowRecoveryCopy(project_, *copy).join(u'|');
    EXPECT_TRUE(
        unusable.startsWith(QStringLiteral("Buffer B: the volume of channel 1 can't be used: no file \"%1\"")
                                .arg(At("gone.bin"))))
        << qPrintable(unusable);

    EXPECT_TRUE(project_.shaderModified);
    EXPECT_EQ(project_.documents[kStageImage].text, odd);
    EXPECT_TRUE(project_.documents[kStageBufferB].hasText);
    EXPECT_EQ(project_.currentStage, uint32_t(kStageBufferB));
    EXPECT_EQ(project_.currentDocument, &project_.documents[kStageBufferB]);
    EXPECT_FALSE(stageTabs[kStageCommon].exists);
    EXPECT_EQ(project_.fileName, QStringLiteral("name.json"));
    EXPECT_EQ(project_.projectFile, At("sub/own name.json"));
    EXPECT_EQ(project_.projectInfo.name, QStringLiteral(u"\u0416"));
    EXPECT_EQ(project_.projectInfo.likes, std::numeric_limits<uint32_t>::max());
    EXPECT_EQ(project_.projectVersion, 0.3f);
    for (uint32_t id = 0; id < kStageCount; ++id) {
        for (size_t i = 0; i < kChannelCount; ++i) {
            const ChannelInput& now = project_.channels[id][i];
            const ChannelInput& before = channelsBefore[id][i];
            const auto all = [](const ChannelInput& c) {
                return std::tuple(c.kind, c.wrap, c.filter, c.vflip, c.srgb, c.internalFormat, c.sourceStage,
                                  c.fileName);
            };
            EXPECT_EQ(all(now), all(before)) << id << ' ' << i;
        }
    }
    const BitmapRef& loaded = project_.channels[kStageImage][0].faces[0];
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->width, 6);
    OnStageChanged(project_, kStageImage);
    EXPECT_TRUE(project_.shaderModified) << "no file has it, whatever it is compared with";
    EXPECT_TRUE(RestorePreviousProject(project_));
    EXPECT_EQ(project_.documents[kStageImage].text, QStringLiteral("thrown away"));
}

TEST_F(Recovery, DamagedCopies) {
    ClearProject(project_, true);
    const QByteArray whole = WriteRecoveryCopy(TakeRecoveryCopy(project_));
    for (qsizetype length = 0; length < whole.size(); length += 7)
        EXPECT_FALSE(ReadRecoveryCopy(whole.first(length))) << length;
    for (const char* other : {"[]", "{}", R"({"pixelgroveRecovery":2,"project":{"stages":[]}})",
                              R"({"pixelgroveRecovery":1,"project":{}})"})
        EXPECT_FALSE(ReadRecoveryCopy(other)) << other;

    // What is out of range goes, the text stays.
    const QByteArray wild =
        R"({"pixelgroveRecovery":1,"previous":[],"project":{"shown":99,"version":"x","info":7,"file":[1],"stages":[3,
        {"stage":8,"text":"a"},{"stage":-1,"text":"a"},{"stage":1e300,"text":"a"},
        {"stage":7,"text":"kept","channels":[0,{"channel":4,"kind":1},{"channel":1,"kind":9,"wrap":1,"filter":-1,
        "vflip":0.5,"source":8,"file":")" +
        QByteArray(260, 'x') + R"("}]}]}})";
    const std::optional<RecoveryCopy> copy = ReadRecoveryCopy(wild);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->project.documents[kStageImage].text, QStringLiteral("kept"));
    EXPECT_EQ(copy->project.shownStage, uint32_t(kStageImage));
    const ChannelInput& channel = copy->project.channels[kStageImage][1];
    EXPECT_EQ(channel.kind + channel.wrap + channel.filter + channel.vflip, 0u);
    EXPECT_EQ(channel.sourceStage, -1);
    EXPECT_TRUE(channel.fileName.isEmpty());
}

TEST_F(Recovery, OnlyDeadProcessesCopiesAreTaken) {
    const QString folder = At("Recovery");
    EXPECT_TRUE(RecoveryFile::TakeDead(folder).empty());
    auto living = RecoveryFile::Create(folder);
    auto dying = RecoveryFile::Create(folder);
    auto silent = RecoveryFile::Create(folder);
    ASSERT_TRUE(living && dying && silent);
    ASSERT_TRUE(living->Write("living") && dying->Write("old") && dying->Write("dead"));
    EXPECT_TRUE(RecoveryFile::TakeDead(folder).empty());
    dying.reset();
    silent.reset();
    // Two that were killed before their first copy was whole: their last sign of life is a minute old, or
    // not.
    for (const auto& [name, age] : {std::pair(".new", 0), std::pair(".left", 70)}) {
        QFile file(folder + u'/' + QString::fromLatin1(name));
        ASSERT_TRUE(
            file.open(QIODevice::WriteOnly) &&
            file.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFile::FileModificationTime));
    }
    ASSERT_TRUE(WriteWholeFile(folder + QStringLiteral("/a.lock"), ""));

    auto dead = RecoveryFile::TakeDead(folder);
    ASSERT_EQ(dead.size(), 1u);
    EXPECT_EQ(dead[0]->Read(), QByteArray("dead"));
    EXPECT_TRUE(RecoveryFile::TakeDead(folder).empty()) << "taken twice";
    EXPECT_FALSE(dead[0]->KeepAside(kRefusedSuffix).isEmpty());
    dead.clear();
    living->Remove();
    living.reset();
    const QStringList left = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(left.size(), 2) << left.join(u' ').toStdString();
    EXPECT_TRUE(left.value(0) == QStringLiteral(".new") && left.value(1).endsWith(QStringLiteral(".old")));
}

TEST_F(Recovery, CopiesKeptAsideAreBounded) {
    for (int i = 0; i < RecoveryFile::kKeptAside + 3; ++i) {
        auto file = RecoveryFile::Create(folder_.path());
        ASSERT_TRUE(file && file->Write("x"));
        file->KeepAside(i % 2 ? kRefusedSuffix : kDamagedSuffix);
    }
    EXPECT_EQ(Files().size(), RecoveryFile::kKeptAside);
}

}  // namespace
}  // namespace pixelgrove
