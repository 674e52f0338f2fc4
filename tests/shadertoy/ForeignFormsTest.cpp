#include "shadertoy/ForeignForms.h"

#include <gtest/gtest.h>

#include "core/ShaderProject.h"
#include "platform/CodePage.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

// A project as the pages have it: every kind of input and pass that has another form there.
QString PageForm(const char* id = "abCD12", const char* name = "n") {
    return Json(
               "{'ver':'0.1','info':{'id':'%1','date':'5','viewed':'7','name':'%2','tags':['a','b']},"
               "'renderpass':["
               "{'type':'image','name':'Image','code':'i','outputs':[{'channel':0,'id':'4dfGRr'}],'inputs':["
               "null,{'channel':0,'type':'buffer','id':'4dXGR8','filepath':'/media/previz/buffer00.png',"
               "'sampler':{'filter':'nearest','wrap':'repeat','vflip':true,'internal':'byte'}},"
               "{'channel':1,'type':'texture','id':'Xdf3zn','filepath':'/media/a/t.jpg'},"
               "{'channel':'2','type':'cubemap','id':'4dX3Rr','filepath':'/media/previz/cubemap00.png'},"
               "{'channel':3,'type':'keyboard','id':'4dXGRr','filepath':'/presets/tex00.jpg'}]},"
               "{'type':'buffer','name':'Fluid step','code':'b','outputs':[{'channel':0,'id':'4sXGR8'}],"
               "'inputs':[{'channel':0,'type':'buffer','id':'XdfGR8','filepath':'/x'},"
               "{'channel':1,'type':'buffer','id':'odd','filepath':'/x'},"
               "{'channel':2,'type':'video','id':'XsfGRn','filepath':'/v'}]},"
               "{'type':'cubemap','name':'','code':'q','outputs':[{'channel':0,'id':'4dX3Rr'}]},"
               "{'code':'s','name':'','outputs':[{'channel':0,'id':'XsfGRr'}],'inputs':[]}]}")
        .arg(QLatin1String(id), QLatin1String(name));
}

void ExpectPageProject(const FoundShader& shader) {
    EXPECT_EQ(shader.id, QStringLiteral("abCD12"));
    EXPECT_EQ(
        shader.warnings,
        QStringList{QStringLiteral("Buffer C: channel 1 reads \"odd\", which is no buffer that is known.")});
    ShaderProject project;
    LoadWarnings warnings;
    ASSERT_TRUE(ReadProjectJson(FromCodePage(shader.json), project, &warnings)) << shader.json.constData();
    EXPECT_EQ(warnings.Lines().join(u'\n'),
              QStringLiteral("Buffer C: the kind \"video\" of channel 2 is unknown, and its input was left "
                             "out.\nThe sound pass was left out; there is no such stage here."));
    EXPECT_EQ(project.info.id, QStringLiteral("abCD12"));
    EXPECT_EQ(project.info.viewed, 7u);
    EXPECT_EQ(project.info.tags, QStringLiteral("a, b"));

    const auto& image = project.stages[kStageImage].channels;
    EXPECT_EQ(image[0].kind, kChannelBuffer);
    EXPECT_EQ(image[0].sourceStage, kStageBufferA);
    EXPECT_EQ(image[0].filter, gl::kNearest);
    EXPECT_EQ(image[0].wrap, gl::kRepeat);
    EXPECT_TRUE(image[0].vflip && image[0].internalFormat);
    EXPECT_EQ(image[1].kind, kChannelTexture);
    EXPECT_EQ(image[1].fileName, QStringLiteral("/media/a/t.jpg"));
    EXPECT_EQ(image[2].kind, kChannelCubeA);
    EXPECT_EQ(image[3].kind, kChannelKeyboard);
    EXPECT_EQ(project.stages[kStageBufferC].source, QByteArray("b"));
    EXPECT_EQ(project.stages[kStageBufferC].channels[0].sourceStage, kStageBufferD);
    EXPECT_EQ(project.stages[kStageBufferC].channels[1].sourceStage, 0);
    EXPECT_EQ(project.stages[kStageCubeA].source, QByteArray("q"));
}

TEST(ForeignFormsTest, ThePagesFormIsReadHoweverItIsWrapped) {
    const char* const rows[] = {
        "%1", "{'Shader':%1}", "[%1]", "[{'Shader':%1}]", "{'userName':'u','shaders':[%1]}", "\xEF\xBB\xBF%1",
    };
    for (const char* row : rows) {
        SCOPED_TRACE(row);
        const QByteArray bytes =
            QByteArray(row).replace('\'', '"').replace("%1", PageForm().toLatin1()) + " \n";
        const FoundShaders found = FindShaders(bytes);
        EXPECT_EQ(found.form, TextForm::Foreign);
        ASSERT_EQ(found.shaders.size(), 1u);
        ExpectPageProject(found.shaders[0]);
        // What comes out has the service's form.
        const FoundShaders again = FindShaders(found.shaders[0].json);
        EXPECT_EQ(again.form, TextForm::Service);
        ASSERT_EQ(again.shaders.size(), 1u);
        EXPECT_EQ(again.shaders[0].json, found.shaders[0].json);
    }
}

TEST(ForeignFormsTest, TheServicesFormStaysAsItIs) {
    for (const QString& text :
         {u' ' + SampleProject() + QStringLiteral("\n stray"), ProjectText(QStringLiteral("[]")),
          ProjectText(QStringLiteral("[7]")), QStringLiteral("{\"Shader\":{\"ver\":0.1}}"),
          // As the writer has it: an output says nothing about a pass.
          ProjectText(
              Json("[{'type':'buffer','name':'odd','code':'','inputs':[],'outputs':[{'id':41}]}]"))}) {
        const QByteArray bytes = ToCodePage(text).replace("\\u00e9", "\xe9");
        const FoundShaders found = FindShaders(bytes);
        ASSERT_EQ(found.form, TextForm::Service) << text.toStdString();
        EXPECT_EQ(found.shaders[0].json, bytes);
    }
}

TEST(ForeignFormsTest, AnExportOfManyIsListed) {
    const QString one = PageForm("one111", "First");
    const QString list = QStringLiteral("[%1,7,%2,{\"Shader\":%1}]").arg(one, PageForm("two222"));
    const FoundShaders found =
        FindShadersInText(QStringLiteral("{\"userName\":\"\u20ac\u03b1\",\"shaders\":%1}").arg(list));
    ASSERT_EQ(found.shaders.size(), 3u);
    EXPECT_EQ(found.shaders[0].name, QStringLiteral("First"));
    ShaderInfo info;
    ASSERT_TRUE(ReadInfoJson(FromCodePage(found.shaders[2].json), info));
    EXPECT_EQ(info.username, QStringLiteral("\u20ac\u03b1"));  // the second isn't in the code page

    const QString passes = QStringLiteral("{\"type\":\"image\"},").repeated(200);
    const FoundShaders bounded = FindShadersInText(QStringLiteral("{\"renderpass\":[%1 7]}").arg(passes));
    ASSERT_EQ(bounded.shaders.size(), 1u);
    EXPECT_EQ(bounded.shaders[0].json.count("image"), 100);
    EXPECT_EQ(bounded.shaders[0].warnings.size(), 1);

    QStringList many;
    for (qsizetype i = 0; i < kMaxFoundShaders + 2; ++i)
        many += QStringLiteral("{\"renderpass\":[]}");
    const FoundShaders cut = FindShadersInText(u'[' + many.join(u',') + u']');
    EXPECT_EQ(qsizetype(cut.shaders.size()), kMaxFoundShaders);
    EXPECT_EQ(cut.leftOut, 2);
}

TEST(ForeignFormsTest, ForeignFilesAreUtf8WhereTheyCanBe) {
    const QByteArray text = "{\"renderpass\":[],\"info\":{\"name\":\"%\"}}";
    for (const auto& [bytes, name] : {std::pair<QByteArray, QString>{"\xc3\xa9", QStringLiteral("\u00e9")},
                                      {"\xce\xb1\xf0\x9f\x8c\x8a", QStringLiteral("\u03b1\U0001F30A")},
                                      {"\xe9\x80", QStringLiteral("\u00e9\u20ac")}}) {
        const FoundShaders found = FindShaders(QByteArray(text).replace("%", bytes));
        ASSERT_EQ(found.shaders.size(), 1u);
        EXPECT_EQ(found.shaders[0].name, name);
        ShaderInfo info;
        ReadInfoJson(FromCodePage(found.shaders[0].json), info);
        EXPECT_EQ(info.name, name);
    }
}

TEST(ForeignFormsTest, GlslIsTheImageStage) {
    const std::pair<QByteArray, bool> rows[] = {
        {"// caf\xe9 {\nvoid mainImage\t(out vec4 c, in vec2 p) { c = vec4(1); }\r\n", true},
        {"// mainImage(\nvoid main() {}", false},
        {"/* mainImage( */ void main() {} /* mainImage(", false},
        {"void mainImage2(out vec4 c) {} int notmainImage(", false},
        {"<html>mainImage(</html>", false},
        {"{ mainImage( ", false},
        {QByteArray("mainImage(\0)", 12), false},
        {"", false},
    };
    for (const auto& [text, isGlsl] : rows) {
        const FoundShaders found = FindShaders(text);
        ASSERT_EQ(found.form, isGlsl ? TextForm::Glsl : TextForm::None) << text.constData();
        if (!isGlsl) continue;
        ShaderProject project;
        ASSERT_TRUE(ReadProjectJson(FromCodePage(found.shaders[0].json), project));
        EXPECT_EQ(project.stages[kStageImage].source, text);
    }
}

}  // namespace
}  // namespace pixelgrove
