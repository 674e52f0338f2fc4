#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <cfloat>
#include <cmath>

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

QString Sampler(const ChannelInput& channel, QStringView key) {
    const auto sampler = WriteInputJson(channel).GetNamedObject(u"sampler");
    return sampler ? sampler->GetNamedString(key).value_or(QStringLiteral("(none)")) : QString();
}

TEST(WriteInput, TypeAndIdByKind) {
    struct Row {
        uint32_t kind;
        int32_t sourceStage;
        const char* ctype;
        double id;
    };
    const Row rows[] = {
        {kChannelUnused, 2, "unknown", 666},
        {kChannelTexture, 3, "texture", 666},
        {kChannelBuffer, 2, "buffer", 257},
        {kChannelBuffer, 5, "buffer", 260},
        {kChannelBuffer, -1, "buffer", 254},
        {kChannelCubeA, 6, "cubemap", 41},
        {kChannelCubemap, -1, "cubemap", 666},
        {kChannelVolume, -1, "volume", 666},
        {kChannelKeyboard, -1, "keyboard", 666},
        {kChannelWebcam, -1, "webcam", 666},
        {kChannelAudio, -1, "audio", 666},
        {9, -1, "unknown", 666},
        {kChannelBuffer, INT32_MAX, "buffer", 2147483902.0},
    };
    for (const Row& row : rows) {
        ChannelInput channel;
        channel.kind = row.kind;
        channel.sourceStage = row.sourceStage;
        channel.channelIndex = 3;
        channel.fileName = QStringLiteral("a \"b\"");
        const JsonObject input = WriteInputJson(channel);
        EXPECT_EQ(input.GetNamedString(u"ctype"), QString::fromLatin1(row.ctype)) << row.kind;
        EXPECT_EQ(input.GetNamedNumber(u"id"), row.id) << row.kind;
        EXPECT_EQ(input.GetNamedNumber(u"channel"), 3.0);
        EXPECT_EQ(input.GetNamedNumber(u"published"), 1.0);
        EXPECT_EQ(input.GetNamedString(u"src"), channel.fileName);
    }
}

TEST(WriteInput, SamplerValues) {
    const std::pair<uint32_t, const char*> filters[] = {{gl::kLinear, "linear"},
                                                        {gl::kNearest, "nearest"},
                                                        {gl::kLinearMipmapLinear, "mipmap"},
                                                        {0, "linear"}};
    const std::pair<uint32_t, const char*> wraps[] = {
        {gl::kClampToEdge, "clamp"}, {gl::kRepeat, "repeat"}, {gl::kMirroredRepeat, "clamp"}, {0, "clamp"}};
    for (size_t i = 0; i < 4; ++i) {
        ChannelInput channel;
        channel.filter = filters[i].first;
        channel.wrap = wraps[i].first;
        channel.vflip = i & 1;
        channel.srgb = i & 2;
        channel.internalFormat = uint32_t(i);
        EXPECT_EQ(Sampler(channel, u"filter"), QString::fromLatin1(filters[i].second));
        EXPECT_EQ(Sampler(channel, u"wrap"), QString::fromLatin1(wraps[i].second));
        EXPECT_EQ(Sampler(channel, u"vflip"), QString::fromLatin1(i & 1 ? "true" : "false"));
        EXPECT_EQ(Sampler(channel, u"srgb"), QString::fromLatin1(i & 2 ? "true" : "false"));
        EXPECT_EQ(Sampler(channel, u"internal"), QString::fromLatin1(i == 1 ? "byte" : "(none)"));
    }
}

TEST(WritePass, NamesOfTheStages) {
    const std::pair<const char*, const char*> rows[] = {
        {"unknown", nullptr},     {"common", "Common"},   {"buffer", "Buffer A"},
        {"buffer", "Buffer B"},   {"buffer", "Buffer C"}, {"buffer", "Buffer D"},
        {"cubemap", "Cubemap A"}, {"image", "Image"},     {"unknown", nullptr}};
    for (uint32_t kind = 0; kind < std::size(rows); ++kind) {
        ShaderStage stage;
        stage.kind = kind;
        stage.source = "caf\xe9 \x80\x81";
        stage.channels[1].kind = kChannelKeyboard;
        const JsonObject pass = WritePassJson(stage);
        EXPECT_EQ(pass.GetNamedString(u"type"), QString::fromLatin1(rows[kind].first));
        EXPECT_EQ(pass.HasKey(u"name"), rows[kind].second != nullptr);
        EXPECT_EQ(pass.HasKey(u"description"), rows[kind].second != nullptr);
        if (rows[kind].second)
            EXPECT_EQ(pass.GetNamedString(u"name"), QString::fromLatin1(rows[kind].second));
        EXPECT_EQ(pass.GetNamedString(u"code"), QString::fromUtf8("café €\u0081"));
        EXPECT_EQ(pass.GetNamedArray(u"inputs")->Size(), 1);
        const JsonArray outputs = *pass.GetNamedArray(u"outputs");
        ASSERT_EQ(outputs.Size(), 1);
        EXPECT_EQ(outputs.GetObjectAt(0)->GetNamedNumber(u"id"), 41.0);
        EXPECT_EQ(outputs.GetObjectAt(0)->GetNamedNumber(u"channel"), 0.0);
    }
}

TEST(WriteProject, OrderOfStagesAndVersion) {
    ShaderProject project;
    project.version = 0.1f;
    QString text = WriteProjectJson(project);
    auto shader = JsonObject::Parse(text)->GetNamedObject(u"Shader");
    EXPECT_EQ(shader->GetNamedArray(u"renderpass")->Size(), 0);
    EXPECT_EQ(shader->GetNamedString(u"ver"), QStringLiteral("0.100000"));

    for (uint32_t id = 0; id < uint32_t(kStageCount); ++id)
        project.stages[id].kind = id;
    for (const auto& [version, expected] : {std::pair{-1.5f, "-1.500000"},
                                            {FLT_MAX, "340282346638528859811704183484516925440.000000"},
                                            {1e-20f, "0.000000"},
                                            {INFINITY, "inf"}}) {
        project.version = version;
        shader = JsonObject::Parse(WriteProjectJson(project))->GetNamedObject(u"Shader");
        EXPECT_EQ(shader->GetNamedString(u"ver"), QString::fromLatin1(expected));
    }
    const JsonArray passes = *shader->GetNamedArray(u"renderpass");
    QStringList names;
    for (qsizetype i = 0; i < passes.Size(); ++i)
        names += *passes.GetObjectAt(i)->GetNamedString(u"name");
    EXPECT_EQ(names.join(u'|'), QStringLiteral("Image|Common|Buffer A|Buffer B|Buffer C|Buffer D|Cubemap A"));
}

TEST(WriteProject, EachRoundAddsABlankToLaterTags) {
    ShaderProject project;
    ASSERT_TRUE(ReadProjectJson(SampleProject(), project));
    for (const char* expected : {"sea,  blue", "sea,   blue"}) {
        ASSERT_TRUE(ReadProjectJson(WriteProjectJson(project), project));
        EXPECT_EQ(project.info.tags, QString::fromLatin1(expected));
    }
    const JsonArray tags = *WriteInfoJson(project.info).GetNamedArray(u"tags");
    ASSERT_EQ(tags.Size(), 2);
    EXPECT_EQ(tags.GetStringAt(0), QStringLiteral("sea"));
    EXPECT_EQ(tags.GetStringAt(1), QStringLiteral("   blue"));
    EXPECT_EQ(WriteInfoJson(ShaderInfo()).GetNamedArray(u"tags")->Size(), 0);
}

TEST(SaveProject, FileReadsBackAsItWas) {
    ShaderProject project;
    ASSERT_TRUE(ReadProjectJson(SampleProject(), project));
    project.info.likes = 0xFFFFFFFFu;
    project.info.name = QString::fromUtf8("Größe \u0090€");
    project.info.tags = QStringLiteral("one");
    QByteArray source;
    for (int byte = 1; byte < 256; ++byte)
        source += char(byte);
    project.stages[kStageCommon].kind = kStageCommon;
    project.stages[kStageCommon].source = source;
    ChannelInput& cube = project.stages[kStageBufferA].channels[3];
    cube.kind = kChannelCubeA;
    cube.channelIndex = 3;
    cube.sourceStage = kStageCubeA;
    cube.wrap = gl::kRepeat;
    cube.filter = gl::kLinearMipmapLinear;

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.json"));
    ASSERT_TRUE(SaveProjectJson(path, project));
    ShaderProject back;
    const QByteArray bytes = ReadWholeFile(path).value_or(QByteArray());
    EXPECT_TRUE(
        bytes.contains("Gr\xf6\xdf"
                       "e \x90\x80"));  // the code page, not UTF-8
    ASSERT_TRUE(ReadProjectJson(FromCodePage(bytes), back));
    EXPECT_EQ(back.info.likes, project.info.likes);
    EXPECT_EQ(back.info.name, project.info.name);
    EXPECT_EQ(back.info.tags, project.info.tags);
    EXPECT_EQ(back.stages[kStageCommon].source, source);
    EXPECT_EQ(back.stages[kStageImage].source, project.stages[kStageImage].source);
    EXPECT_EQ(back.stages[kStageBufferA].channels[3].kind, kChannelCubeA);
    EXPECT_EQ(back.stages[kStageBufferA].channels[3].sourceStage, int32_t(kStageCubeA));
    EXPECT_EQ(back.stages[kStageBufferA].channels[3].wrap, gl::kRepeat);
    EXPECT_EQ(back.stages[kStageBufferA].channels[3].filter, gl::kLinearMipmapLinear);
    EXPECT_EQ(back.stages[kStageImage].channels[2].internalFormat, 1u);
    EXPECT_EQ(back.stages[kStageImage].channels[2].vflip, 1u);

    EXPECT_FALSE(SaveProjectJson(folder.filePath(QStringLiteral("none/p.json")), project));
    EXPECT_FALSE(SaveProjectJson(folder.path(), project));
}

}  // namespace
}  // namespace pixelgrove
