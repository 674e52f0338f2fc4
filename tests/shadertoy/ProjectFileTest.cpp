#include "shadertoy/ProjectFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "core/BaseFolders.h"
#include "platform/Files.h"
#include "shadertoy/ProjectJsonSamples.h"
#include "shadertoy/ProjectMedia.h"
#include "support/ScratchFolders.h"

namespace pixelgrove {
namespace {

class ProjectFileTest : public ::testing::Test {
  protected:
    QString At(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

    static bool WritePicture(const QString& path, int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        return image.save(path);
    }
    QString WriteProject(const QString& text) const {
        EXPECT_TRUE(WriteWholeFile(At("project.json"), text.toLatin1()));
        return At("project.json");
    }

    test::ScratchFolders dataFolders_;
    QTemporaryDir folder_;
};

TEST_F(ProjectFileTest, NamesLeadToLocalFiles) {
    const QString assets = CacheRoot() + QStringLiteral("/Assets");
    const QString cachedName = QStringLiteral("cached.png");
    const QString cached = assets + u'/' + cachedName;
    const QString secret = At("sub/a.png");
    ASSERT_TRUE(QDir().mkpath(assets) && QDir().mkpath(At("sub")));
    ASSERT_TRUE(WritePicture(cached, 8, 4) && WritePicture(secret, 2, 2));
    ASSERT_TRUE(QDir().mkpath(At("media")) && WritePicture(At("media/m.png"), 2, 2));
    ASSERT_TRUE(WritePicture(At("media/n.png"), 2, 2) && WritePicture(At("n.png"), 2, 2));
    // Leads from the assets folder to a file outside it.
    const QString climbing = QDir(assets).relativeFilePath(secret);
    ASSERT_TRUE(IsPlainFile(assets + u'/' + climbing));

    const std::pair<QString, QString> rows[] = {
        {secret, secret},
        {QStringLiteral("sub\\a.png"), folder_.path() + QStringLiteral("/sub/a.png")},
        {QStringLiteral("https://host/media/a/") + cachedName, cached},
        {QStringLiteral("m.png"), At("media/m.png")},
        {QStringLiteral("/media/a/m.png"), At("media/m.png")},
        {QStringLiteral("https://host/media/a/n.png"), At("n.png")},
        {QStringLiteral("/media/a/"), {}},
        {QStringLiteral("/sub/a.png"), {}},
        {QStringLiteral("/media/a/") + QString(climbing).replace(u'/', u'\\'), {}},
        {QString(cachedName).insert(4, QChar(0)), {}},
    };
    for (const auto& [name, expected] : rows)
        EXPECT_EQ(ResolveMedium(name, folder_.path()), expected) << name.toStdString();
    for (const auto& [name, start] :
         {std::pair{"none.png", "no file \"none.png\" was found in"},
          {"/media/a/none.png", "no file \"/media/a/none.png\" was found, nor \"none.png\" in"}}) {
        QString reason;
        EXPECT_EQ(ResolveMedium(QString::fromLatin1(name), folder_.path(), &reason), QString());
        const QString places =
            QLatin1String(start) + QStringLiteral(" \"%1\", \"%1/media\"").arg(folder_.path());
        EXPECT_TRUE(reason.startsWith(places) && reason.endsWith(u'"' + assets + u'"')) << qPrintable(reason);
    }

    for (const char* refused : {"", "a/", "..", ".hidden", "..\\x.png", "a\x01.png", "a\x7f"})
        EXPECT_EQ(MediumCachePath(QString::fromLatin1(refused)), QString()) << refused;
    EXPECT_EQ(MediumCachePath(QStringLiteral("/media/a/x..png")), assets + QStringLiteral("/x..png"));
}

TEST_F(ProjectFileTest, ChannelsGetTheirMedia) {
    ASSERT_TRUE(WritePicture(At("tex.png"), 12, 5) && QDir().mkpath(At("media")));
    for (const char* face : {"sky.png", "sky_1.png", "sky_2.png", "sky_4.png", "sky_5.png"})
        ASSERT_TRUE(WritePicture(At(face), 16, 16));
    // A volume of 4 x 3 x 2 bytes.
    const QByteArray volume = QByteArray("BIN\0\4\0\0\0\3\0\0\0\2\0\0\0\1\0\0\0", 20) + QByteArray(24, 'x');
    ASSERT_TRUE(WriteWholeFile(At("vol.bin"), volume));
    ASSERT_TRUE(WriteWholeFile(At("huge.bin"), volume));
    ASSERT_TRUE(QFile::resize(At("huge.bin"), kMaxVolumeFileBytes + 1));  // sparse
    ASSERT_TRUE(WriteWholeFile(At("bad.bin"), "BONE that is no volume"));

    ShaderProject project;
    const auto set = [&project](StageId stage, int index, uint32_t kind, const QString& name) {
        ChannelInput& channel = project.stages[stage].channels[size_t(index)];
        project.stages[stage].kind = stage;
        channel.kind = kind;
        channel.sourceStage = 0;
        channel.fileName = name;
    };
    set(kStageImage, 0, kChannelTexture, QStringLiteral("tex.png"));
    set(kStageImage, 1, kChannelCubemap, QStringLiteral("sky.png"));
    set(kStageImage, 2, kChannelVolume, QStringLiteral("vol.bin"));
    set(kStageBufferA, 0, kChannelTexture, QStringLiteral("./media/../tex.png"));
    set(kStageBufferA, 1, kChannelVolume, QStringLiteral("bad.bin"));
    set(kStageBufferA, 2, kChannelTexture, QStringLiteral("bad.bin"));
    set(kStageBufferA, 3, kChannelVolume, QStringLiteral("huge.bin"));
    const QStringList unusable = PrepareProjectChannels(project, folder_.path());
    const QString words = QStringLiteral("%1: the %2 of channel %3 can't be used: \"%4\" %5.");
    const auto sentence = [&](const char* stage, const char* kind, const char* index, const char* file,
                              const char* why) {
        return words.arg(QLatin1String(stage), QLatin1String(kind), QLatin1String(index), At(file),
                         QLatin1String(why));
    };
    EXPECT_EQ(unusable.join(u'\n'),
              QStringList({sentence("Buffer A", "volume", "1", "bad.bin", "is no volume file"),
                           sentence("Buffer A", "texture", "2", "bad.bin", "is no picture that can be read"),
                           sentence("Buffer A", "volume", "3", "huge.bin", "is too large for a volume"),
                           sentence("Image", "cubemap", "1", "sky_3.png", "is missing")})
                  .join(u'\n'));

    const auto& image = project.stages[kStageImage];
    ASSERT_TRUE(image.channels[0].faces[0]);
    EXPECT_FALSE(image.channels[0].faces[1]);
    EXPECT_EQ(image.channels[0].fileName, At("tex.png"));
    EXPECT_EQ(image.channels[0].sourceStage, -1);
    EXPECT_EQ(image.channelResolution[0], (std::array<float, 3>{12, 5, 1}));
    for (size_t face = 0; face < 6; ++face)
        EXPECT_EQ(image.channels[1].faces[face] != nullptr, face != 3) << face;
    EXPECT_EQ(image.channelResolution[1], (std::array<float, 3>{16, 16, 1}));
    EXPECT_TRUE(image.channels[2].volumeData);
    EXPECT_EQ(image.channelResolution[2], (std::array<float, 3>{4, 3, 2}));

    const auto& bufferA = project.stages[kStageBufferA];
    EXPECT_EQ(bufferA.channels[0].faces[0], image.channels[0].faces[0]);  // loaded once
    EXPECT_FALSE(bufferA.channels[1].volumeData);
    EXPECT_EQ(bufferA.channels[1].kind, kChannelVolume);
    EXPECT_FALSE(bufferA.channels[2].faces[0]);
    EXPECT_EQ(bufferA.channelResolution[2], (std::array<float, 3>{0, 0, 0}));
    EXPECT_FALSE(bufferA.channels[3].volumeData);
}

TEST_F(ProjectFileTest, MediaTogetherHaveABound) {
    // 24 bits a pixel: 3000, 6000 and 300 bytes. Each counts once, however it is spelled.
    ASSERT_TRUE(WritePicture(At("a.png"), 100, 10) && WritePicture(At("b.png"), 100, 20));
    ASSERT_TRUE(WritePicture(At("c.png"), 100, 1) && QFile::link(At("a.png"), At("link.png")));
    ShaderProject project;
    const auto& image = project.stages[kStageImage].channels;
    const auto set = [&](StageId stage, std::array<const char*, kChannelCount> files) {
        project.stages[stage].kind = stage;
        for (size_t i = 0; i < files.size(); ++i) {
            project.stages[stage].channels[i].kind = kChannelTexture;
            project.stages[stage].channels[i].fileName = QString::fromLatin1(files[i]);
        }
    };
    set(kStageBufferA, {"a.png", "./a.png", "x/../a.png", "link.png"});
    set(kStageImage, {"b.png", "c.png", ".//a.png", "a.png"});
    ASSERT_TRUE(QDir().mkpath(At("x")));
    const QStringList unusable = PrepareProjectChannels(project, folder_.path(), {}, 3300);
    EXPECT_EQ(
        unusable.join(u'\n'),
        QStringLiteral("Image: the texture of channel 0 can't be used: \"%1\" would take the media of the "
                       "project beyond 2 GB of memory.")
            .arg(At("b.png")));
    for (size_t i = 0; i < kChannelCount; ++i)
        EXPECT_EQ(image[i].faces[0] != nullptr, i != 0) << i;
    EXPECT_EQ(image[2].faces[0], project.stages[kStageBufferA].channels[3].faces[0]);
}

TEST_F(ProjectFileTest, StatusTellsWhatAFileIs) {
    using Status = ProjectFileStatus;
    struct Row {
        QString text;
        Status status;
        bool hasMessage;
    };
    ASSERT_TRUE(WritePicture(At("tex.png"), 3, 2));  // beside the project's file
    const QByteArray source = "\xc3\xa9\x80";        // UTF-8 bytes are so many single-byte characters
    const QString texture = Json("{'ctype':'texture','channel':1,'id':1,'src':'tex.png'}");
    const QString image = Pass("image", "", source, texture);
    const QString badChannel = Pass("image", "", source, texture + Json(",{'ctype':'mic','channel':4}"));
    const auto passes = [](const QString& content) { return ProjectText(u'[' + content + u']'); };
    const Row rows[] = {
        {QStringLiteral(" \n") + passes(image) + QStringLiteral(" stray"), Status::Loaded, false},
        {passes(badChannel), Status::Loaded, true},
        {passes(image + u',' + Pass("sound", "Sound", "lost")), Status::Loaded, true},
        {passes(image + QStringLiteral(",7")), Status::Loaded, true},
        {passes(Pass("common", "", "new")), Status::NoImageStage, true},
        {Json("{'other':1}"), Status::NotAProject, true},
        {passes(image).chopped(1), Status::NotAProject, true},
        {passes(image) + passes(image), Status::NotAProject, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text.toStdString());
        ShaderProject project;
        project.version = 9.0f;
        const ProjectFileResult result = LoadProjectFile(WriteProject(row.text), project);
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(!result.message.isEmpty() || !result.warnings.isEmpty(), row.hasMessage);
        if (result.status == Status::Loaded) {
            EXPECT_EQ(result.isComplete, !row.hasMessage);
        }
        EXPECT_EQ(project.version == 9.0f, row.status == Status::NotAProject);  // left alone
        const ShaderStage& stage = project.stages[kStageImage];
        EXPECT_EQ(stage.source, row.status == Status::Loaded ? source : QByteArray());
        EXPECT_EQ(stage.channels[1].faces[0] != nullptr, row.status == Status::Loaded);
    }

    ShaderProject project;
    EXPECT_EQ(LoadProjectFile(At("none.json"), project).status, Status::Unreadable);
    EXPECT_EQ(LoadProjectFile(folder_.path(), project).status, Status::Unreadable);
    const QString large = WriteProject(passes(image));
    ASSERT_TRUE(QFile::resize(large, kMaxProjectFileBytes + 1));
    EXPECT_EQ(LoadProjectFile(large, project).status, Status::TooLarge);
    ASSERT_TRUE(QFile::resize(large, kMaxProjectFileBytes));  // the text, then zero bytes
    EXPECT_EQ(LoadProjectFile(large, project).status, Status::Loaded);
}

TEST_F(ProjectFileTest, OtherFormsLoadButAreNotTheProjectsOwnFile) {
    using Status = ProjectFileStatus;
    const QString shader = Json(
        "{'info':{'id':'%1','name':'n'},'renderpass':[{'type':'image','code':'i',"
        "'inputs':[{'type':'texture','channel':1,'filepath':'/media/a/t.png'}]}]}");
    ASSERT_TRUE(WritePicture(At("t.png"), 12, 5));
    const QString one = QString(shader).replace(QStringLiteral("%1"), QStringLiteral("one111"));
    const QString two = QString(shader).replace(QStringLiteral("%1"), QStringLiteral("two222"));

    ShaderProject project;
    ProjectFileResult result = LoadProjectFile(WriteProject(one), project);
    EXPECT_EQ(result.status, Status::Loaded);
    EXPECT_FALSE(result.isComplete);
    EXPECT_TRUE(result.warnings.isEmpty()) << qPrintable(result.warnings.join(u'\n'));
    EXPECT_TRUE(project.stages[kStageImage].channels[1].faces[0]);

    EXPECT_EQ(LoadProjectFile(WriteProject(QStringLiteral("void mainImage(\n")), project).status,
              Status::Loaded);
    EXPECT_EQ(project.stages[kStageImage].source, QByteArray("void mainImage(\n"));

    result = LoadProjectFile(WriteProject(QStringLiteral("{\"shaders\":[%1,%2]}").arg(one, two)), project);
    EXPECT_EQ(result.status, Status::ManyShaders);
    EXPECT_TRUE(project.info.id.isEmpty());  // left alone
    ASSERT_EQ(result.choices.shaders.size(), 2u);
    result = LoadFoundShader(result.choices.shaders[1], QStringLiteral("shader"), folder_.path(), project);
    EXPECT_EQ(result.status, Status::Loaded);
    EXPECT_FALSE(result.isComplete);
    EXPECT_EQ(project.info.id, QStringLiteral("two222"));
    EXPECT_TRUE(project.stages[kStageImage].channels[1].faces[0]);
}

}  // namespace
}  // namespace pixelgrove
