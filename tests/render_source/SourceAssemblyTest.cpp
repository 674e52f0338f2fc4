#include "render/source/SourceAssembly.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "platform/Files.h"

namespace pixelgrove {
namespace {

QByteArray Golden(const char* name) {
    const QString folder = QStringLiteral(PIXELGROVE_SOURCE_DIR "/tests/render_source/golden/");
    const std::optional<QByteArray> text = ReadWholeFile(folder + QLatin1String(name));
    EXPECT_TRUE(text) << name;
    return text.value_or(QByteArray());
}

// A null Common text is none at all.
ShaderProject ProjectOf(const QByteArray& image, const QByteArray& common = QByteArray()) {
    ShaderProject project;
    project.stages[kStageImage].source = image;
    if (!common.isNull()) project.stages[kStageCommon].kind = kStageCommon;
    project.stages[kStageCommon].source = common;
    return project;
}

// The part of the assembled Image shader between the prefix and the footer.
QByteArray MiddleOf(const ShaderProject& project) {
    IncludeContext context;
    const auto assembled = AssembleStageSource(project, context, kStageImage, "#version 460");
    EXPECT_TRUE(context.virtualFiles.empty());
    if (!assembled) return "FAILED";
    const QByteArray prefixEnd = "    if (!cond) st_AssertColor.x = -1.0;\n}\n";
    const qsizetype begin = assembled->indexOf(prefixEnd) + prefixEnd.size();
    return assembled->mid(begin, assembled->indexOf("void main(void)") - begin);
}

// "NAME DEPTH FIRST-END" of each row.
std::vector<std::string> SpansOf(const IncludeContext& context) {
    std::vector<std::string> spans;
    for (const IncludedFile& row : context.includedFiles) {
        const QString span = QStringLiteral("%1 %2-%3").arg(row.depth).arg(row.firstLine).arg(row.endLine);
        spans.push_back((row.name + u' ' + span).toStdString());
    }
    return spans;
}

// Expands a text at depth 0 with files at hand in the search folder.
struct Expansion : testing::Test {
    QTemporaryDir folder;
    IncludeContext context;
    QByteArray output;
    int lineCounter = 1;

    Expansion() { context.searchFolder = folder.path(); }

    void AddFile(const QString& name, const QByteArray& text) {
        ASSERT_TRUE(WriteWholeFile(folder.filePath(name), text));
    }
    bool Expand(const QByteArray& text) {
        output.clear();
        context.includedFiles.clear();
        lineCounter = 1;
        return ExpandIncludes(context, text, output, lineCounter, 0);
    }
};

TEST(AssembleStageSourceTest, WholeImageTextWithCommonAndTwoChannels) {
    ShaderProject project = ProjectOf(Golden("Image.txt"), Golden("Common.txt"));
    project.stages[kStageImage].channels[0].kind = kChannelTexture;
    project.stages[kStageImage].channels[1].kind = kChannelBuffer;
    IncludeContext context;
    const auto assembled = AssembleStageSource(project, context, kStageImage, "#version 460");
    ASSERT_TRUE(assembled);
    EXPECT_EQ(assembled->toStdString(), Golden("ImageAssembled.txt").toStdString());
    EXPECT_THAT(SpansOf(context),
                testing::ElementsAre("PREFIX 0 1-36", "Common 0 36-41", "Image 0 41-46", "SUFFIX 0 46-56"));
}

TEST(AssembleStageSourceTest, WholeCubeText) {
    ShaderProject project;
    project.stages[kStageCubeA].source = Golden("CubeA.txt");
    IncludeContext context;
    const auto assembled = AssembleStageSource(project, context, kStageCubeA, "#version 450");
    ASSERT_TRUE(assembled);
    EXPECT_EQ(assembled->toStdString(), Golden("CubeAAssembled.txt").toStdString());
}

TEST(AssembleStageSourceTest, SamplersThatTheGoldenTextsLack) {
    ShaderProject project = ProjectOf("body");
    const uint32_t kinds[] = {kChannelWebcam, kChannelAudio, 77, kChannelVolume};
    for (size_t i = 0; i < 4; ++i)
        project.stages[kStageImage].channels[i].kind = kinds[i];
    EXPECT_EQ(
        MiddleOf(project),
        "uniform sampler2D iChannel0;\nuniform sampler2D iChannel1;\nuniform sampler3D iChannel3;\nbody\n");
}

TEST(AssembleStageSourceTest, UserTexts) {
    struct Case {
        const char* what;
        QByteArray common, image, expected;
    };
    const Case cases[] = {
        {"trailing blank lines go, leading ones stay", "c\n\n\n", "\n\na\n\r\n\n", "c\n\n\na\n"},
        {"a zero byte ends the text", "c", QByteArray("a\0b", 3), "c\na\n"},
        {"Common again is dropped", "c", "#include \"Common\"\na", "c\na\n"},
        {"Common in other letter case comes twice", "c", "#include \"common\"\na", "c\nc\na\n"},
        {"a stage that includes itself", "c", "a\n#include \"Image\"\nb", "c\na\nb\n"},
        {"another stage is not at hand", "c", "#include \"Buffer A\"\na", "c\na\n"},
        {"a comment left open in Common ends with it", "/*", "#include \"common\"\na", "/*\n/*\na\n"},
        {"an indented include fails the whole", "c", "a\n  #include \"x\"", "FAILED"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(MiddleOf(ProjectOf(c.image, c.common)), c.expected) << c.what;
    }
}

TEST_F(Expansion, FailuresNameTheirLine) {
    AddFile(QStringLiteral("bad"), "a\n#include <x>\n");
    AddFile(QStringLiteral("loop"), "#include \"loop\"\n");
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"a\n  #include \"x\"\n",
         "Image(2): error: an #include stands at the start of its line: #include \"x\""},
        {"#include \"none\"\n\n#include <x>\nb",
         "Image(3): error: the name of an #include stands in double quotes: #include <x>"},
        {"\n#include \"bad\"",
         folder.path().toUtf8() +
             "/bad(2): error: the name of an #include stands in double quotes: #include <x>"},
    };
    for (const auto& [image, expected] : cases) {
        EXPECT_FALSE(AssembleStageSource(ProjectOf(image), context, kStageImage, "#version 460"));
        EXPECT_EQ(context.failure.toStdString(), expected.toStdString());
    }
    ASSERT_TRUE(AssembleStageSource(ProjectOf("a\n#include \"none\"\n#include \"loop\"\n"), context,
                                    kStageImage, "#version 460"));
    EXPECT_EQ(context.failure, QString());
    EXPECT_EQ(
        context.missingFiles,
        (QStringList{QStringLiteral("Image(2): note: no file was found for this line: #include \"none\"")}));
}

TEST(AssembleStageSourceTest, OnlyRenderedStages) {
    IncludeContext context;
    for (const uint32_t stage : {0u, 1u, 8u, 0xffffffffu}) {
        EXPECT_FALSE(AssembleStageSource(ProjectOf("a"), context, stage, "#version 460")) << stage;
    }
}

TEST_F(Expansion, IncludeLines) {
    AddFile(QStringLiteral("x"), "X1\nX2\n\n");
    AddFile(QStringLiteral("empty"), "");
    struct Case {
        const char* what;
        QByteArray text;
        const char* expected;  // null: refused
    };
    const Case cases[] = {
        {"the line vanishes with its line end", "a\n#include \"x\" // why\nb\n", "a\nX1\nX2\nb\n"},
        {"at the very end, no line end", "#include\t \"x\"", "X1\nX2\n"},
        {"twice", "#include \"x\"\n#include \"x\"\nb", "X1\nX2\nb"},
        {"missing", "a\n#include \"none\"\nb", "a\nb"},
        {"empty file", "#include \"empty\"\nb", "b"},
        {"a device", "#include \"/dev/zero\"\nb", "b"},
        {"no blank, so no include", "#include\"x\"\nb", "#include\"x\"\nb"},
        {"not at the start of a line", "a #include \"x\"\n", "a #include \"x\"\n"},
        {"comment opened by the line itself", "#include \"x\" /*\n#include \"y\"\n", "X1\nX2\n"},
        {"in a block comment", "/*\n#include \"x\"\n #include <\n*/\n",
         "/*\n#include \"x\"\n #include <\n*/\n"},
        {"in a line that ends the comment", "/*\n#include \"x\" */\n", "/*\n#include \"x\" */\n"},
        {"behind a one-line comment", "/* c */\n#include \"x\"\n", "/* c */\nX1\nX2\n"},
        {"behind a comment of many lines", "/*\n\n**/\n#include \"x\"\n", "/*\n\n**/\nX1\nX2\n"},
        {"one star cannot open and close", "/*/\n#include \"x\"\n*/", "/*/\n#include \"x\"\n*/"},
        {"a line comment opens a block comment", "//*\n#include \"x\"\n", "//*\n#include \"x\"\n"},
        {"indented by a blank", "a\n #include \"x\"\n", nullptr},
        {"indented by a tab", "\t#include \"x\"\n", nullptr},
        {"angle brackets", "#include <x>\n", nullptr},
        {"no closing quote", "#include \"x\n", nullptr},
        {"a name of 260 characters", "#include \"" + QByteArray(260, 'n') + "\"\nb", "b"},
        {"a name of 261", "#include \"" + QByteArray(261, 'n') + "\"\nb", nullptr},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Expand(c.text), c.expected != nullptr) << c.what;
        if (!c.expected) continue;
        EXPECT_EQ(output, c.expected) << c.what;
        EXPECT_EQ(lineCounter, output.count('\n') + 1) << c.what;
    }
}

TEST_F(Expansion, SpansAndNamesOfNestedFiles) {
    AddFile(QStringLiteral("outer.glsl"), "o1\r\n#include \"inner.glsl\"\r\no2\r\n");
    AddFile(QStringLiteral("inner.glsl"), "i1\ni2");
    context.virtualFiles = {{QStringLiteral("Piece"), "p\n#include \"outer.glsl\"\nq"}};
    ASSERT_TRUE(Expand("#include \"PIECE\"\nend"));
    EXPECT_EQ(output, "p\no1\ni1\ni2\no2\nq\nend");
    const std::string path = folder.path().toStdString();
    // The name asked for in memory, the path for a file from the search folder.
    EXPECT_THAT(SpansOf(context),
                testing::ElementsAre("PIECE 0 1-7", path + "/outer.glsl 1 2-6", path + "/inner.glsl 2 3-5"));
}

TEST_F(Expansion, CurrentFolderComesBeforeTheSearchFolder) {
    QTemporaryDir current;
    ASSERT_TRUE(WriteWholeFile(current.filePath(QStringLiteral("both")), "current"));
    AddFile(QStringLiteral("both"), "search");
    AddFile(QStringLiteral("found"), "found");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(current.path()));
    EXPECT_TRUE(Expand("#include \"both\"\n#include \"found\"\n"));
    EXPECT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(output, "current\nfound\n");
    EXPECT_EQ(context.includedFiles[0].name, QStringLiteral("both"));
}

TEST_F(Expansion, SixtyFourFilesAndNoMore) {
    QByteArray text;
    for (int i = 0; i < kMaxIncludeRows; ++i) {
        AddFile(QString::number(i), "line");
        text += "#include \"" + QByteArray::number(i) + "\"\n";
    }
    EXPECT_TRUE(Expand(text));
    EXPECT_EQ(lineCounter, 65);
    // Neither a missing nor a repeated file needs a row.
    EXPECT_TRUE(Expand(text + "#include \"none\"\n#include \"3\"\n"));
    AddFile(QStringLiteral("last"), "line");
    EXPECT_FALSE(Expand(text + "#include \"last\"\n"));
    EXPECT_EQ(context.includedFiles.size(), 64u);
}

TEST_F(Expansion, NestingOfThirtyTwoAndNoMore) {
    for (int i = 8; i < 40; ++i)
        AddFile(QString::number(i), "#include \"" + QByteArray::number(i + 1) + "\"\nend");
    AddFile(QStringLiteral("40"), "end");
    EXPECT_TRUE(Expand("#include \"9\"\n"));
    EXPECT_EQ(context.includedFiles.size(), 32u);
    EXPECT_FALSE(Expand("#include \"8\"\n"));
}

TEST(NormalizeLineEndsTest, PairsAndLoneEnds) {
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"", ""},           {"a\r\nb\n\rc\rd\ne", "a\nb\nc\nd\ne"}, {"\r\r\n\n\r\r", "\n\n\n\n"},
        {"\n\r\n", "\n\n"}, {QByteArray("a\r\0\nb", 5), "a\n"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(NormalizeLineEnds(text), expected) << text.toPercentEncoding().toStdString();
    }
}

}  // namespace
}  // namespace pixelgrove
