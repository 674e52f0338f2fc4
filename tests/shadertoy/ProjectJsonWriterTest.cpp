#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <cfloat>

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

std::string Text(const JsonObject& object, QStringView key) {
    return object.GetNamedString(key).value_or(QStringLiteral("(none)")).toStdString();
}

TEST(WriteInput, TypeIdAndSampler) {
    const struct {
        uint32_t kind;
        int32_t sourceStage;
        uint32_t filter, wrap, flag, internalFormat;
        const char* texts;  // ctype, filter, wrap, vflip, srgb, internal
        double id;
    } rows[] = {{0, 2, 0, 0, 0, 0, "unknown linear clamp false true (none)", 666},
                {1, 3, gl::kNearest, gl::kRepeat, 1, 1, "texture nearest repeat true false byte", 666},
                {2, 2, gl::kLinearMipmapLinear, gl::kMirroredRepeat, 7, 2,
                 "buffer mipmap clamp true false (none)", 257},
                {2, -1, 0, 0, 0, 0, "buffer linear clamp false true (none)", 254},
                {2, INT32_MAX, 0, 0, 0, 0, "buffer linear clamp false true (none)", 2147483902.0},
                {3, 6, 0, 0, 0, 0, "cubemap linear clamp false true (none)", 41},
                {4, -1, 0, 0, 0, 0, "cubemap linear clamp false true (none)", 666}};
    for (const auto& row : rows) {
        ChannelInput channel;
        channel.kind = row.kind;
        channel.sourceStage = row.sourceStage;
        channel.filter = row.filter;
        channel.wrap = row.wrap;
        channel.vflip = row.flag;
        channel.srgb = !row.flag;
        channel.internalFormat = row.internalFormat;
        const JsonObject input = WriteInputJson(channel);
        const JsonObject sampler = input.GetNamedObject(u"sampler").value_or(JsonObject());
        std::string texts = Text(input, u"ctype");
        for (const QStringView key : {u"filter", u"wrap", u"vflip", u"srgb", u"internal"})
            texts += " " + Text(sampler, key);
        EXPECT_EQ(texts, row.texts);
        EXPECT_EQ(input.GetNamedNumber(u"id"), row.id) << row.texts;
    }
}

TEST(WriteProject, OrderOfStagesAndVersion) {
    ShaderProject project;
    EXPECT_TRUE(WriteProjectJson(project).contains(Json("'renderpass':[]")));
    for (uint32_t id = 0; id < uint32_t(kStageCount); ++id)
        project.stages[id].kind = id;
    project.version = FLT_MAX;
    const auto shader = JsonObject::Parse(WriteProjectJson(project))->GetNamedObject(u"Shader");
    EXPECT_EQ(Text(*shader, u"ver"), "340282346638528859811704183484516925440.000000");
    const JsonArray passes = *shader->GetNamedArray(u"renderpass");
    std::string names;
    for (qsizetype i = 0; i < passes.Size(); ++i) {
        const JsonObject pass = passes.GetObjectAt(i).value_or(JsonObject());
        names += Text(pass, u"type") + " " + Text(pass, u"name") + "|";
    }
    EXPECT_EQ(names,
              "image Image|common Common|buffer Buffer A|buffer Buffer B|buffer Buffer C|buffer Buffer D|"
              "cubemap Cubemap A|");
}

TEST(WriteProject, EachRoundAddsABlankToLaterTags) {
    ShaderProject project;
    ASSERT_TRUE(ReadProjectJson(SampleProject(), project));
    for (const char* expected : {"sea,  blue", "sea,   blue"}) {
        ASSERT_TRUE(ReadProjectJson(WriteProjectJson(project), project));
        EXPECT_EQ(project.info.tags, QString::fromLatin1(expected));
    }
    EXPECT_TRUE(WriteInfoJson(project.info).Stringify().contains(Json("['sea','   blue']")));
    EXPECT_EQ(WriteInfoJson(ShaderInfo()).GetNamedArray(u"tags")->Size(), 0);
}

TEST(SaveProject, FileReadsBackAsItWas) {
    ShaderProject project;
    ASSERT_TRUE(ReadProjectJson(SampleProject(), project));
    project.info.tags = QStringLiteral("one");
    project.info.likes = 0xFFFFFFFFu;
    project.info.name = QString::fromUtf8("Größe \"\u0090€");
    // A file's name may hold what the code page doesn't.
    project.info.description = QString::fromUtf8("/home/\\u00e9 写真/🌲?.png");
    ShaderStage& common = project.stages[kStageCommon];
    common.kind = kStageCommon;
    for (int byte = 1; byte < 256; ++byte)
        common.source += char(byte);

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.json"));
    ASSERT_TRUE(SaveProjectJson(path, project));
    const QByteArray bytes = ReadWholeFile(path).value_or(QByteArray());
    EXPECT_TRUE(bytes.contains("Gr\xf6\xdf\x65 \\\"\x90\x80"));  // the code page, not UTF-8
    ShaderProject back;
    ASSERT_TRUE(ReadProjectJson(FromCodePage(bytes), back));
    EXPECT_EQ(back.stages[kStageCommon].source, common.source);
    EXPECT_EQ(back.info.name, project.info.name);
    EXPECT_EQ(back.info.description, project.info.description);
    EXPECT_EQ(WriteProjectJson(back), WriteProjectJson(project));

    QString reason;
    EXPECT_FALSE(SaveProjectJson(folder.filePath(QStringLiteral("none/p.json")), project, &reason));
    EXPECT_FALSE(reason.isEmpty());
}

}  // namespace
}  // namespace pixelgrove
