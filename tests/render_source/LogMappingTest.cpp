#include "render/source/LogMapping.h"

#include <gtest/gtest.h>

#include "core/Stages.h"
#include "render/source/SourceAssembly.h"

namespace pixelgrove {
namespace {

// PREFIX on lines 1-39, Common 40-49, Image 50-89 with a file on 60-69 that itself includes one on 62-64,
// SUFFIX from 90 to 100.
IncludeContext SampleContext() {
    IncludeContext context;
    context.includedFiles = {
        {QStringLiteral("PREFIX"), 0, 1, 40},     {QStringLiteral("Common"), 0, 40, 50},
        {QStringLiteral("Image"), 0, 50, 90},     {QStringLiteral("lib.glsl"), 1, 60, 70},
        {QStringLiteral("deep.glsl"), 2, 62, 65}, {QStringLiteral("SUFFIX"), 0, 90, 101},
    };
    return context;
}

QString Map(const QString& log) {
    IncludeContext context = SampleContext();
    QString mapped = MapShaderLog(context, log, QStringLiteral("Image"));
    EXPECT_TRUE(context.includedFiles.empty());
    return mapped;
}

TEST(MapShaderLogTest, FileAndLine) {
    const std::pair<int, QString> cases[] = {
        {12, QStringLiteral("PREFIX(12)")},
        {40, QStringLiteral("PREFIX(40)")},  // the first line of Common goes to the piece before it
        {41, QStringLiteral("Common(2)")},
        {50, QStringLiteral("Common(11)")},  // and that of Image to Common, one past its end
        {51, QStringLiteral("Image(2)")},
        {60, QStringLiteral("lib.glsl(11)")},
        {63, QStringLiteral("deep.glsl(14)")},
        {70, QStringLiteral("lib.glsl(21)")},
        {71, QStringLiteral("Image(12)")},   // the ten lines of lib.glsl are not the user's
        {91, QStringLiteral("SUFFIX(-8)")},  // both Image and lib.glsl inside it are subtracted
        {200, QStringLiteral("Image(90)")},
        {0, QStringLiteral("Image(0)")},
        {-3, QStringLiteral("Image(-3)")},
    };
    for (const auto& [line, place] : cases) {
        EXPECT_EQ(Map(QStringLiteral("0(%1) : error C0000: text").arg(line)),
                  place + QStringLiteral(": error C0000: text\n"))
            << line;
    }
}

TEST(MapShaderLogTest, Forms) {
    const std::pair<QString, QString> cases[] = {
        {QStringLiteral("0:53(12): error: text"), QStringLiteral("Image(4): error: text\n")},
        {QStringLiteral("0:53(12): warning: text"), QStringLiteral("Image(4): warning: text\n")},
        {QStringLiteral("0:53(1): preprocessor error: text"),
         QStringLiteral("Image(4): preprocessor error: text\n")},
        {QStringLiteral(" -1( +53):\t x: y "), QStringLiteral("Image(4): x: y \n")},
        {QStringLiteral("0(53)error"), QStringLiteral("0(53)error\n")},
        {QStringLiteral("0(53) : "), QStringLiteral("0(53) : \n")},
        {QStringLiteral("0 (53) : a"), QStringLiteral("0 (53) : a\n")},
        {QStringLiteral("0(53 ) : a"), QStringLiteral("0(53 ) : a\n")},
        {QStringLiteral("ERROR: 0:53: 'x' : undeclared"), QStringLiteral("ERROR: 0:53: 'x' : undeclared\n")},
        {QStringLiteral("0:53(12): remark: text"), QStringLiteral("0:53(12): remark: text\n")},
        {QStringLiteral("error: linking"), QStringLiteral("error: linking\n")},
        {QStringLiteral("99999999999999999999(53) : a"), QStringLiteral("Image(4): a\n")},
        // 110 lines stand in the spans that are subtracted.
        {QStringLiteral("0(99999999999999999999) : a"), QStringLiteral("Image(2147483537): a\n")},
        {QStringLiteral("0(-99999999999999999999) : a"), QStringLiteral("Image(-2147483648): a\n")},
        {QStringLiteral("0(53) : a\n\nplain\n0:41(2): error: b\n"),
         QStringLiteral("Image(4): a\n\nplain\nCommon(2): error: b\n")},
        {QStringLiteral("plain") + QChar(u'\0') + QStringLiteral("rest"), QStringLiteral("plain\n")},
        {QStringLiteral("\n"), QStringLiteral("\n")},
    };
    for (const auto& [log, expected] : cases)
        EXPECT_EQ(Map(log), expected) << log.toStdString();
    EXPECT_TRUE(Map(QString()).isNull());
}

// Mapping works on what the assembly left: each line of the stage comes back to the editor's line.
TEST(MapShaderLogTest, AfterAssembly) {
    ShaderProject project;
    project.stages[kStageCommon].kind = kStageCommon;
    project.stages[kStageCommon].source = "c1\nc2";
    project.stages[kStageBufferA].source = "b1\nb2\n#include \"common\"\nb4\n";
    const std::pair<QByteArray, QString> cases[] = {
        {"b1", QStringLiteral("Common(3)")},
        {"b2", QStringLiteral("Buffer A(2)")},
        {"b4", QStringLiteral("common(5)")},
        {"void main(void)", QStringLiteral("Buffer A(4)")},
    };
    for (const auto& [text, place] : cases) {
        IncludeContext context;
        const auto assembled = AssembleStageSource(project, context, kStageBufferA, "#version 460");
        ASSERT_TRUE(assembled);
        const auto line = assembled->left(assembled->indexOf(text)).count('\n') + 1;
        const QString mapped = MapShaderLog(context, QStringLiteral("0(%1) : error").arg(line), QString());
        EXPECT_EQ(mapped, place + QStringLiteral(": error\n")) << text.toStdString();
    }
}

TEST(SplitErrorTextTest, LinesGoByTheWord) {
    const StageErrorTexts texts = SplitErrorText(QStringLiteral(
        "Common(2): a\nImage(3): b\n\nlib/uncommon.glsl(1): c\nImage(4): no such COMMON thing\n"));
    EXPECT_EQ(texts.common,
              QStringLiteral("Common(2): a\nlib/uncommon.glsl(1): c\nImage(4): no such COMMON thing\n"));
    EXPECT_EQ(texts.stage, QStringLiteral("Image(3): b\n\n"));
    EXPECT_TRUE(SplitErrorText(QString()).stage.isEmpty());
}

TEST(ExplainUnsetChannelsTest, OneNoteForEachChannel) {
    const QString mapped = QStringLiteral(
        "Image(4): error: `iChannel1' undeclared\n"
        "Image(4): error: no matching function for call to `texture(error, vec2)'\n"
        "Image(9): error: `iChannel1' undeclared\n"
        "/a (b)/c.glsl(7): error C1503: undefined variable \"iChannel3\"\n"
        "Image(10): error: `iChannel4' undeclared\n"
        "Image(10): error: `iChannel10' undeclared\n"
        "Image(11): error: `iChannel0' redeclared\n"
        "ERROR: 0:12: 'iChannel2' : undeclared identifier\n");
    const QString explained = QStringLiteral(
        "Image(4): error: `iChannel1' undeclared\n"
        "Image(4): note: iChannel1 is not set: choose an input for channel 1 of Buffer B.\n"
        "Image(4): error: no matching function for call to `texture(error, vec2)'\n"
        "Image(9): error: `iChannel1' undeclared\n"
        "/a (b)/c.glsl(7): error C1503: undefined variable \"iChannel3\"\n"
        "/a (b)/c.glsl(7): note: iChannel3 is not set: choose an input for channel 3 of Buffer B.\n"
        "Image(10): error: `iChannel4' undeclared\n"
        "Image(10): error: `iChannel10' undeclared\n"
        "Image(11): error: `iChannel0' redeclared\n"
        "ERROR: 0:12: 'iChannel2' : undeclared identifier\n"
        "note: iChannel2 is not set: choose an input for channel 2 of Buffer B.\n");
    EXPECT_EQ(ExplainUnsetChannels(mapped, QStringLiteral("Buffer B")).toStdString(),
              explained.toStdString());
    EXPECT_TRUE(ExplainUnsetChannels(QString(), QStringLiteral("Image")).isNull());
}

}  // namespace
}  // namespace pixelgrove
