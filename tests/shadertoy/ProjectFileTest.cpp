#include "shadertoy/ProjectFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "core/BaseFolders.h"
#include "core/VolumeFile.h"
#include "platform/Files.h"
#include "shadertoy/ProjectJsonSamples.h"
#include "shadertoy/ProjectMedia.h"

namespace pixelgrove {
namespace {

QByteArray VolumeBytes(uint32_t x, uint32_t y, uint32_t z, uint32_t kind, qsizetype samples) {
    QByteArray bytes("BIN\0", 4);
    for (const uint32_t word : {x, y, z, kind}) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes += char(word >> shift);
    }
    return bytes + QByteArray(samples, '\x55');
}

// A folder for the project and one file in the cache's folder, which all programs of the build share.
class ProjectFileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        SetBaseFolders();
        assets_ = CacheRoot() + QStringLiteral("/Assets");
        ASSERT_TRUE(QDir().mkpath(assets_));
        cachedName_ = QStringLiteral("test-%1.png").arg(getpid());
        ASSERT_TRUE(WritePicture(assets_ + u'/' + cachedName_, 8, 4));
        ASSERT_TRUE(folder_.isValid());
    }
    void TearDown() override { QFile::remove(assets_ + u'/' + cachedName_); }

    QString At(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

    static bool WritePicture(const QString& path, int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        return image.save(path);
    }

    QString WriteProject(const QString& text) const {
        const QString path = At("project.json");
        EXPECT_TRUE(WriteWholeFile(path, text.toLatin1()));
        return path;
    }

    QTemporaryDir folder_;
    QString assets_;
    QString cachedName_;
};

TEST_F(ProjectFileTest, NamesLeadToLocalFiles) {
    ASSERT_TRUE(QDir().mkpath(At("sub")));
    ASSERT_TRUE(WritePicture(At("sub/a.png"), 2, 2));
    ASSERT_TRUE(WritePicture(At("project.png"), 2, 2));
    const QString cached = assets_ + u'/' + cachedName_;
    const QString secret = At("sub/a.png");
    // Leads from the assets folder to a file outside it.
    const QString climbing = QDir(assets_).relativeFilePath(secret);
    ASSERT_TRUE(IsPlainFile(assets_ + u'/' + climbing));

    const std::pair<QString, QString> rows[] = {
        {secret, secret},
        {QString(secret).replace(u'/', u'\\'), secret},
        {QStringLiteral("sub/a.png"), folder_.path() + QStringLiteral("/sub/a.png")},
        {QStringLiteral("sub\\a.png"), folder_.path() + QStringLiteral("/sub/a.png")},
        {QStringLiteral("/media/a/") + cachedName_, cached},
        {QStringLiteral("https://host/media/a/") + cachedName_, cached},
        {cachedName_, cached},
        {QStringLiteral("/media/../../") + cachedName_, cached},
        {QStringLiteral("/media/a/sub"), {}},
        {QStringLiteral("/media/a/"), {}},
        {QStringLiteral("sub"), {}},
        {QStringLiteral("/sub/a.png"), {}},
        {QStringLiteral("/media/a/") + QString(climbing).replace(u'/', u'\\'), {}},
        {QStringLiteral("/media/a/.."), {}},
        {QStringLiteral(".."), {}},
        {QString(cachedName_).insert(4, QChar(0)), {}},
        {QStringLiteral("/media/a/") + cachedName_ + u'\n', {}},
        {{}, {}},
    };
    for (const auto& [name, expected] : rows) {
        EXPECT_EQ(ResolveMedium(name, folder_.path()), expected) << name.toStdString();
    }
    EXPECT_EQ(ResolveMedium(QStringLiteral("sub/a.png"), {}), QString());

    for (const char* refused :
         {"", "a/", "..", ".hidden", "a/..", "..\\x.png", "a\\b.png", "a\x01.png", "a\x7f"}) {
        EXPECT_EQ(MediumCachePath(QString::fromLatin1(refused)), QString()) << refused;
    }
    EXPECT_EQ(MediumCachePath(QStringLiteral("/media/a/x..png")), assets_ + QStringLiteral("/x..png"));
}

TEST_F(ProjectFileTest, ChannelsGetTheirMedia) {
    ASSERT_TRUE(WritePicture(At("tex.png"), 12, 5));
    for (const char* face : {"sky.png", "sky_1.png", "sky_2.png", "sky_4.png", "sky_5.png"})
        ASSERT_TRUE(WritePicture(At(face), 16, 16));
    ASSERT_TRUE(WriteWholeFile(At("vol.bin"), VolumeBytes(4, 3, 2, 1, 24)));
    ASSERT_TRUE(WriteWholeFile(At("bad.bin"), "BON" + VolumeBytes(4, 3, 2, 1, 24).mid(3)));
    ASSERT_TRUE(WriteWholeFile(At("short.bin"), "BIN"));
    ASSERT_TRUE(WriteWholeFile(At("text.png"), "no picture"));

    ShaderProject project;
    const auto set = [&project](StageId stage, int index, uint32_t kind, const QString& name) {
        project.stages[stage].kind = stage;
        project.stages[stage].channels[size_t(index)].kind = kind;
        project.stages[stage].channels[size_t(index)].sourceStage = 0;
        project.stages[stage].channels[size_t(index)].fileName = name;
    };
    set(kStageImage, 0, kChannelTexture, QStringLiteral("tex.png"));
    set(kStageImage, 1, kChannelCubemap, QStringLiteral("sky.png"));
    set(kStageImage, 2, kChannelVolume, QStringLiteral("vol.bin"));
    set(kStageImage, 3, kChannelAudio, QStringLiteral("tex.png"));
    set(kStageBufferA, 0, kChannelTexture, QStringLiteral("tex.png"));
    set(kStageBufferA, 1, kChannelVolume, QStringLiteral("bad.bin"));
    set(kStageBufferA, 2, kChannelTexture, QStringLiteral("text.png"));
    set(kStageBufferA, 3, kChannelVolume, QStringLiteral("short.bin"));
    set(kStageBufferB, 0, kChannelTexture, QStringLiteral("/media/a/") + cachedName_);
    set(kStageBufferB, 1, kChannelTexture, QStringLiteral("/media/a/missing.png"));
    set(kStageBufferB, 2, kChannelVolume, QStringLiteral("vol.bin"));
    set(kStageBufferC, 0, kChannelTexture, QStringLiteral("tex.png"));
    project.stages[kStageBufferC].kind = kStageNone;
    PrepareProjectChannels(project, folder_.path());

    const auto& image = project.stages[kStageImage];
    ASSERT_TRUE(image.channels[0].faces[0]);
    EXPECT_EQ(image.channels[0].faces[0]->width, 12);
    EXPECT_FALSE(image.channels[0].faces[1]);
    EXPECT_EQ(image.channels[0].fileName, At("tex.png"));
    EXPECT_EQ(image.channels[0].sourceStage, -1);
    EXPECT_EQ(image.channelResolution[0], (std::array<float, 3>{12, 5, 1}));
    for (size_t face = 0; face < 6; ++face) {
        EXPECT_EQ(image.channels[1].faces[face] != nullptr, face != 3) << face;
    }
    EXPECT_EQ(image.channelResolution[1], (std::array<float, 3>{16, 16, 1}));
    ASSERT_TRUE(image.channels[2].volumeData);
    EXPECT_TRUE(IsVolumeComplete(*image.channels[2].volumeData));
    EXPECT_EQ(image.channelResolution[2], (std::array<float, 3>{4, 3, 2}));
    EXPECT_FALSE(image.channels[3].faces[0]);
    EXPECT_EQ(image.channels[3].fileName, QStringLiteral("tex.png"));

    const auto& bufferA = project.stages[kStageBufferA];
    EXPECT_EQ(bufferA.channels[0].faces[0], image.channels[0].faces[0]);  // loaded once
    EXPECT_FALSE(bufferA.channels[1].volumeData);
    EXPECT_EQ(bufferA.channels[1].kind, kChannelVolume);
    EXPECT_FALSE(bufferA.channels[2].faces[0]);
    EXPECT_EQ(bufferA.channelResolution[2], (std::array<float, 3>{0, 0, 0}));
    EXPECT_FALSE(bufferA.channels[3].volumeData);

    const auto& bufferB = project.stages[kStageBufferB];
    ASSERT_TRUE(bufferB.channels[0].faces[0]);
    EXPECT_EQ(bufferB.channels[0].faces[0]->width, 8);
    EXPECT_EQ(bufferB.channels[0].fileName, assets_ + u'/' + cachedName_);
    EXPECT_FALSE(bufferB.channels[1].faces[0]);
    EXPECT_EQ(bufferB.channels[1].fileName, QStringLiteral("/media/a/missing.png"));
    EXPECT_EQ(bufferB.channels[2].volumeData, image.channels[2].volumeData);
    EXPECT_FALSE(project.stages[kStageBufferC].channels[0].faces[0]);
}

TEST_F(ProjectFileTest, LocalPathThatDoesNotFitLeavesTheName) {
    const QString deep = QString(120, u'd') + u'/' + QString(120, u'e');
    ASSERT_TRUE(QDir().mkpath(folder_.filePath(deep)));
    const QString name = deep + QStringLiteral("/t.png");
    ASSERT_TRUE(WritePicture(folder_.filePath(name), 2, 2));
    ShaderProject project;
    ShaderStage& stage = project.stages[kStageImage];
    stage.kind = kStageImage;
    stage.channels[0].kind = kChannelTexture;
    stage.channels[0].fileName = name;
    PrepareProjectChannels(project, folder_.path());
    EXPECT_TRUE(stage.channels[0].faces[0]);
    ASSERT_GE(folder_.filePath(name).size(), kFileNameCapacity);
    EXPECT_EQ(stage.channels[0].fileName, name);
}

TEST_F(ProjectFileTest, HugeVolumeFilesAreRefusedUnread) {
    ASSERT_TRUE(WriteWholeFile(At("huge.bin"), VolumeBytes(4, 3, 2, 1, 24)));
    ASSERT_TRUE(QFile::resize(At("huge.bin"), kMaxVolumeFileBytes + 1));  // sparse
    EXPECT_FALSE(LoadVolumeFile(At("huge.bin")));
    EXPECT_FALSE(LoadVolumeFile(folder_.path()));
    EXPECT_FALSE(LoadVolumeFile(At("none.bin")));
}

TEST_F(ProjectFileTest, StatusTellsWhatAFileIs) {
    struct Row {
        QString text;
        ProjectFileStatus status;
        bool isReplaced;
        bool hasMessage;
    };
    const QString image = Pass("image", "", "new");
    const QString badChannel = Pass("image", "", "new", Json("{'ctype':'mic','channel':4}"));
    const auto passes = [](const QString& content) { return ProjectText(u'[' + content + u']'); };
    const Row rows[] = {
        {passes(image), ProjectFileStatus::Loaded, true, false},
        {QStringLiteral(" \n") + passes(image) + QStringLiteral(" stray"), ProjectFileStatus::Loaded, true,
         false},
        {passes(badChannel), ProjectFileStatus::Loaded, true, true},
        {passes(image + QStringLiteral(",7")), ProjectFileStatus::Loaded, true, true},
        {passes(Pass("common", "", "new")), ProjectFileStatus::NoImageStage, true, true},
        {passes({}), ProjectFileStatus::NoImageStage, true, true},
        {{}, ProjectFileStatus::NotAProject, false, true},
        {QStringLiteral("void main(){}"), ProjectFileStatus::NotAProject, false, true},
        {Json("{'Error':'Shader not found'}"), ProjectFileStatus::NotAProject, false, true},
        {Json("{'other':1}"), ProjectFileStatus::NotAProject, false, true},
        {Json("[{}]"), ProjectFileStatus::NotAProject, false, true},
        {passes(image).chopped(1), ProjectFileStatus::NotAProject, false, true},
        {passes(image) + passes(image), ProjectFileStatus::NotAProject, false, true},
        {ProjectText(u'[' + image + u']', QStringLiteral("\"x\"")), ProjectFileStatus::NotAProject, false,
         true},
    };
    for (const Row& row : rows) {
        ShaderProject project;
        project.version = 9.0f;
        const ProjectFileResult result = LoadProjectFile(WriteProject(row.text), project);
        EXPECT_EQ(result.status, row.status) << row.text.toStdString();
        EXPECT_EQ(project.version == 9.0f, !row.isReplaced) << row.text.toStdString();
        EXPECT_EQ(!result.message.isEmpty(), row.hasMessage) << row.text.toStdString();
        const bool hasImage = row.status == ProjectFileStatus::Loaded;
        EXPECT_EQ(project.stages[kStageImage].source, hasImage ? "new" : "") << row.text.toStdString();
    }

    ShaderProject project;
    EXPECT_EQ(LoadProjectFile(At("none.json"), project).status, ProjectFileStatus::Unreadable);
    EXPECT_EQ(LoadProjectFile(folder_.path(), project).status, ProjectFileStatus::Unreadable);
    EXPECT_EQ(LoadProjectFile({}, project).status, ProjectFileStatus::Unreadable);
    const QString large = WriteProject(passes(image));
    ASSERT_TRUE(QFile::resize(large, kMaxProjectFileBytes + 1));
    EXPECT_EQ(LoadProjectFile(large, project).status, ProjectFileStatus::TooLarge);
    ASSERT_TRUE(QFile::resize(large, kMaxProjectFileBytes));  // the text, then zero bytes
    EXPECT_EQ(LoadProjectFile(large, project).status, ProjectFileStatus::Loaded);
}

TEST_F(ProjectFileTest, BytesAreOfTheCodePageAndMediaStandBesideTheFile) {
    ASSERT_TRUE(WritePicture(At("tex.png"), 3, 2));
    const QString input = Json("{'ctype':'texture','channel':1,'id':1,'src':'tex.png'}");
    // UTF-8 bytes in a file are so many single-byte characters.
    const QString path = WriteProject(ProjectText(u'[' + Pass("image", "", "\xc3\xa9\x80", input) + u']'));
    ShaderProject project;
    ASSERT_EQ(LoadProjectFile(path, project).status, ProjectFileStatus::Loaded);
    EXPECT_EQ(project.stages[kStageImage].source, QByteArray("\xc3\xa9\x80"));
    EXPECT_TRUE(project.stages[kStageImage].channels[1].faces[0]);
    EXPECT_EQ(project.stages[kStageImage].channels[1].fileName, At("tex.png"));
}

}  // namespace
}  // namespace pixelgrove
