#include "render/source/LogMapping.h"

#include <gtest/gtest.h>

#include "render/source/OuterLines.h"
#include "render/source/SourceAssembly.h"

namespace pixelgrove {
namespace {

// Maps a log of a text with PREFIX on lines 1-39, Common 40-49, Image 50-89 with a file on 60-69 that itself
// includes one on 62-64, SUFFIX from 90 to 100.
std::string Map(const std::string& log) {
    IncludeContext context;
    context.includedFiles = {
        {QStringLiteral("PREFIX"), 0, 1, 40},     {QStringLiteral("Common"), 0, 40, 50},
        {QStringLiteral("Image"), 0, 50, 90},     {QStringLiteral("lib.glsl"), 1, 60, 70},
        {QStringLiteral("deep.glsl"), 2, 62, 65}, {QStringLiteral("SUFFIX"), 0, 90, 101},
    };
    const QString mapped = MapShaderLog(context, QString::fromStdString(log), QStringLiteral("Image"));
    EXPECT_TRUE(context.includedFiles.empty());
    EXPECT_EQ(mapped.isNull(), log.empty());
    return mapped.toStdString();
}

TEST(MapShaderLogTest, FileAndLine) {
    const std::pair<int, std::string> cases[] = {
        {12, "PREFIX(12)"},   {40, "PREFIX(40)"},  // the first line of Common goes to the piece before it
        {41, "Common(2)"},    {50, "Common(11)"},  // and that of Image to Common, one past its end
        {51, "Image(2)"},     {60, "lib.glsl(11)"}, {63, "deep.glsl(14)"},
        {70, "lib.glsl(21)"}, {71, "Image(12)"},  // the ten lines of lib.glsl are not the user's
        {91, "SUFFIX(-8)"},                       // both Image and lib.glsl inside it are subtracted
        {200, "Image(90)"},   {-3, "Image(-3)"},
    };
    for (const auto& [line, place] : cases) {
        EXPECT_EQ(Map("0(" + std::to_string(line) + ") : error C0000: text"),
                  place + ": error C0000: text\n");
    }
}

TEST(MapShaderLogTest, Forms) {
    const std::pair<std::string, std::string> cases[] = {
        {"0:53(12): error: text", "Image(4): error: text\n"},
        {"0:53(12): warning: text", "Image(4): warning: text\n"},
        {"0:53(1): preprocessor error: text", "Image(4): preprocessor error: text\n"},
        {" -1( +53):\t x: y ", "Image(4): x: y \n"},
        {"0(53)error", "0(53)error\n"},
        {"0(53) : ", "0(53) : \n"},
        {"0 (53) : a", "0 (53) : a\n"},
        {"ERROR: 0:53: 'x' : undeclared", "ERROR: 0:53: 'x' : undeclared\n"},
        {"0:53(12): remark: text", "0:53(12): remark: text\n"},
        {"99999999999999999999(53) : a", "Image(4): a\n"},
        // 110 lines stand in the spans that are subtracted.
        {"0(99999999999999999999) : a", "Image(2147483537): a\n"},
        {"0(-99999999999999999999) : a", "Image(-2147483648): a\n"},
        {"0(53) : a\n\nplain\n0:41(2): error: b\n", "Image(4): a\n\nplain\nCommon(2): error: b\n"},
        {std::string("plain\0rest", 10), "plain\n"},
        {"\n", "\n"},
        {"", ""},
    };
    for (const auto& [log, expected] : cases)
        EXPECT_EQ(Map(log), expected) << log;
}

TEST(SplitErrorsTest, LinesGoByTheWord) {
    const StageErrors errors =
        SplitErrors(QStringLiteral("Common(2): a\nImage(3): b\nCommon(4): note: "
                                   "n\n\nlib/uncommon.glsl(1): c\nImage(4): no such COMMON thing\n"));
    EXPECT_EQ(TextOf(errors.common),
              QStringLiteral("Common(2): a\nlib/uncommon.glsl(1): c\nImage(4): no such COMMON thing\n"));
    EXPECT_EQ(TextOf(errors.stage), QStringLiteral("Image(3): b\nCommon(4): note: n\n\n"))
        << "a note stays where it is";
}

TEST(MessagesOfTest, ThePlaceOfEachLine) {
    struct Case {
        const char* line;
        const char* place;
        int number;
    };
    const Case cases[] = {
        {"Image(12): error (3): x", "Image", 12},
        {"Buffer D(-2): x", "Buffer D", -2},
        {"/a (b)/c(1).glsl(7): x", "/a (b)/c(1).glsl", 7},
        {"Image(99999999999): x", "Image", 2147483647},
        {"Image(0): x", "Image", 0},
        {"(5): x", "", 0},
        {"Image(): x", "", 0},
        {"Image(5 x", "", 0},
        {"Image: linking failed.", "", 0},
        {"", "", 0},
    };
    for (const Case& item : cases) {
        const CompileMessages messages = MessagesOf(QString::fromLatin1(item.line) + u'\n');
        ASSERT_EQ(messages.size(), 1u);
        EXPECT_EQ(messages[0].place, QLatin1String(item.place)) << item.line;
        EXPECT_EQ(messages[0].line, item.number) << item.line;
        EXPECT_EQ(messages[0].text, QLatin1String(item.line));
    }
}

TEST(ExplainUnsetChannelsTest, OneNoteForEachChannel) {
    // A line of the log, and the note that is to stand behind it.
    const std::pair<const char*, const char*> cases[] = {
        {"Image(4): error: `iChannel1' undeclared\n",
         "Image(4): note: iChannel1 is not set: choose an input for channel 1 of Buffer B.\n"},
        {"Image(4): error: no matching function for call to `texture(error, vec2)'\n", ""},
        {"Image(9): error: `iChannel1' undeclared\n", ""},
        {"/a (b)/c.glsl(7): error C1503: undefined variable \"iChannel3\"\n",
         "/a (b)/c.glsl(7): note: iChannel3 is not set: choose an input for channel 3 of Buffer B.\n"},
        {"Image(10): error: `iChannel4' undeclared\n", ""},
        {"Image(10): error: `iChannel10' undeclared\n", ""},
        {"Image(11): error: `iChannel0' redeclared\n", ""},
        {"ERROR: 0:12: 'iChannel2' : undeclared identifier\n",
         "note: iChannel2 is not set: choose an input for channel 2 of Buffer B.\n"},
    };
    std::string mapped;
    std::string explained;
    for (const auto& [line, note] : cases) {
        mapped += line;
        explained += std::string(line) + note;
    }
    EXPECT_EQ(ExplainUnsetChannels(QString::fromStdString(mapped), QStringLiteral("Buffer B")).toStdString(),
              explained);
    EXPECT_TRUE(ExplainUnsetChannels(QString(), QStringLiteral("Image")).isNull());
}

TEST(ExplainOuterLinesTest, TheLikelyCauseAndItsPlace) {
    struct Case {
        const char* common;  // null: the stage isn't there
        const char* image;
        int line;  // of what stands behind the stage, from 1; 0 for the first line behind the prefix
        const char* message;
        const char* note;
    };
    const char* const syntax = "error: syntax error, unexpected '{'";
    const char* const none = "error: no function with name 'mainImage'";
    const Case cases[] = {
        {nullptr, "bad\nx", 0, "error: `bad' undeclared",
         "Image(1): note: the message above is about this line."},
        {"bad", "x", 0, "error: `bad' undeclared", "Common(1): note: the message above is about this line."},
        {nullptr, "a;\n#define color 3\n", 3, syntax,
         "Image(2): note: the text clashes with what stands behind it: here is a macro named `color`."},
        {"#define vec4 vec3", "x\ny", 9, "error: type mismatch",
         "Common(1): note: the text clashes with what stands behind it: here is a macro named `vec4`."},
        {nullptr, "#define color 3\n#undef color\n// #define main\nvoid f() {\n{ }\n", 2, syntax,
         "Image(4): note: the brace that opens here is not closed."},
        {nullptr, "f\n /* }\n", 10, "preprocessor error: Unterminated comment",
         "Image(2): note: the comment that begins here has no end."},
        {"int i; // \\", "f\ng", 4, none,
         "Common(1): note: the backslash at the end of this line takes in the line behind it."},
        {nullptr, "float f()\n{ return 1.0; }\n\n", 4, none,
         "Image(2): note: a stage needs the function void mainImage(out vec4, in vec2)."},
        {nullptr, "a;\nvec4 mainImage(vec2 p) { }", 4,
         "error: no matching function for call to `mainImage(vec4, vec2)'",
         "Image(2): note: a stage needs the function void mainImage(out vec4, in vec2)."},
        {nullptr, "a;\nvoid main() {}", 1, "error: function `main' redefined",
         "Image(2): note: main stands behind the text already, and calls mainImage."},
        {nullptr, "a;\nfloat y = 1.0\n\n", 1, "error: syntax error, unexpected VOID_TOK",
         "Image(2): note: the text ends too early: a semicolon may be missing."},
        {nullptr, "a;\nb;", 7, "error: strange",
         "Image(2): note: the text clashes with what stands behind it."},
    };
    for (const Case& item : cases) {
        ShaderProject project;
        if (item.common) project.stages[kStageCommon].kind = kStageCommon;
        project.stages[kStageCommon].source = item.common;
        project.stages[kStageImage].source = item.image;
        IncludeContext context;
        const auto text = AssembleStageSource(project, context, kStageImage, "#version 450");
        const std::vector<IncludedFile>& rows = context.includedFiles;
        const int line = item.line == 0 ? rows.front().endLine : rows.back().firstLine + item.line - 1;
        // Twice the same, and one that needs no words.
        const QString message = QStringLiteral("0:%1(1): %2\n").arg(line).arg(QLatin1String(item.message));
        const QString plain = QStringLiteral("0:%1(1): error: a\n").arg(rows.back().firstLine - 1);
        const QString log = message + message + (item.line == 0 ? QString() : plain) + message;
        EXPECT_EQ(ExplainOuterLines(log, log, *text, rows).remove(message).remove(plain).toStdString(),
                  std::string(item.note) + '\n');
    }
}

}  // namespace
}  // namespace pixelgrove
