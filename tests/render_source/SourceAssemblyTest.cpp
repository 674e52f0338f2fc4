#include "render/source/SourceAssembly.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <chrono>

#include "platform/Files.h"

namespace pixelgrove {
namespace {

QByteArray Golden(const QString& name) {
    const QString folder = QStringLiteral(PIXELGROVE_SOURCE_DIR "/tests/render_source/golden/");
    const std::optional<QByteArray> text = ReadWholeFile(folder + name);
    EXPECT_TRUE(text) << name.toStdString();
    return text.value_or(QByteArray());
}

ShaderProject ProjectOf(const QByteArray& image) {
    ShaderProject project;
    project.stages[kStageImage].kind = kStageImage;
    project.stages[kStageImage].source = image;
    return project;
}

void AddCommon(ShaderProject& project, const QByteArray& text) {
    project.stages[kStageCommon].kind = kStageCommon;
    project.stages[kStageCommon].source = text;
}

// The part of an assembled shader between the prefix and the image footer.
QByteArray MiddleOf(const std::optional<QByteArray>& assembled) {
    if (!assembled) return "FAILED";
    const QByteArray prefixEnd = "    if (!cond) st_AssertColor.x = -1.0;\n}\n";
    const qsizetype begin = assembled->indexOf(prefixEnd) + prefixEnd.size();
    return assembled->mid(begin, assembled->indexOf("void main(void)") - begin);
}

std::vector<std::string> NamesOf(const IncludeContext& context) {
    std::vector<std::string> names;
    for (const IncludedFile& row : context.includedFiles)
        names.push_back(row.name.toStdString());
    return names;
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
    ShaderProject project = ProjectOf(Golden(QStringLiteral("Image.txt")));
    AddCommon(project, Golden(QStringLiteral("Common.txt")));
    project.stages[kStageImage].channels[0].kind = kChannelTexture;
    project.stages[kStageImage].channels[1].kind = kChannelBuffer;
    IncludeContext context;
    const auto assembled = AssembleStageSource(project, context, kStageImage, "#version 460");
    ASSERT_TRUE(assembled);
    EXPECT_EQ(assembled->toStdString(), Golden(QStringLiteral("ImageAssembled.txt")).toStdString());
    EXPECT_TRUE(context.virtualFiles.empty());
    EXPECT_THAT(NamesOf(context), testing::ElementsAre("PREFIX", "Common", "Image", "SUFFIX"));
    // Every piece ends where the next begins.
    for (size_t i = 0; i + 1 < context.includedFiles.size(); ++i) {
        EXPECT_EQ(context.includedFiles[i].endLine, context.includedFiles[i + 1].firstLine);
    }
    EXPECT_EQ(context.includedFiles.back().endLine, assembled->count('\n') + 1);
}

TEST(AssembleStageSourceTest, WholeCubeText) {
    ShaderProject project;
    project.stages[kStageCubeA].source = Golden(QStringLiteral("CubeA.txt"));
    IncludeContext context;
    const auto assembled = AssembleStageSource(project, context, kStageCubeA, "#version 450");
    ASSERT_TRUE(assembled);
    EXPECT_EQ(assembled->toStdString(), Golden(QStringLiteral("CubeAAssembled.txt")).toStdString());
}

TEST(AssembleStageSourceTest, SamplerOfEveryChannelKind) {
    const std::pair<uint32_t, QByteArray> cases[] = {
        {kChannelUnused, ""},
        {kChannelTexture, "uniform sampler2D iChannel2;\n"},
        {kChannelBuffer, "uniform sampler2D iChannel2;\n"},
        {kChannelCubeA, "uniform samplerCube iChannel2;\n"},
        {kChannelCubemap, "uniform samplerCube iChannel2;\n"},
        {kChannelVolume, "uniform sampler3D iChannel2;\n"},
        {kChannelKeyboard, "uniform sampler2D iChannel2;\n"},
        {kChannelWebcam, "uniform sampler2D iChannel2;\n"},
        {kChannelAudio, "uniform sampler2D iChannel2;\n"},
        {77, ""},
    };
    for (const auto& [kind, declaration] : cases) {
        ShaderProject project = ProjectOf("body");
        project.stages[kStageImage].channels[2].kind = kind;
        IncludeContext context;
        EXPECT_EQ(MiddleOf(AssembleStageSource(project, context, kStageImage, "#version 460")),
                  declaration + "body\n")
            << "kind " << kind;
    }
}

TEST(AssembleStageSourceTest, UserTexts) {
    struct Case {
        const char* what;
        QByteArray common, image, expected;
    };
    const Case cases[] = {
        {"DOS line ends", "", "a\r\nb\r\n", "\na\nb\n"},
        {"trailing blank lines go, leading ones stay", "c\n\n\n", "\n\na\n\r\n\n", "c\n\n\na\n"},
        {"no source at all", "", "", "\n\n"},
        {"a zero byte ends the text", "c", QByteArray("a\0b", 3), "c\na\n"},
        {"Common again is dropped", "c", "#include \"Common\"\na", "c\na\n"},
        {"Common in other letter case comes twice", "c", "#include \"common\"\na", "c\nc\na\n"},
        {"a stage that includes itself", "c", "a\n#include \"Image\"\nb", "c\na\nb\n"},
        {"another stage is not at hand", "c", "#include \"Buffer A\"\na", "c\na\n"},
        {"a comment left open in Common ends with it", "/*", "#include \"common\"\na", "/*\n/*\na\n"},
        {"an indented include fails the whole", "c", "a\n  #include \"x\"", "FAILED"},
        {"also in Common", "#include <x>", "a", "FAILED"},
    };
    for (const Case& c : cases) {
        ShaderProject project = ProjectOf(c.image);
        AddCommon(project, c.common);
        IncludeContext context;
        EXPECT_EQ(MiddleOf(AssembleStageSource(project, context, kStageImage, "#version 460")), c.expected)
            << c.what;
        EXPECT_TRUE(context.virtualFiles.empty()) << c.what;
    }
}

TEST(AssembleStageSourceTest, OnlyRenderedStages) {
    ShaderProject project = ProjectOf("a");
    AddCommon(project, "c");
    IncludeContext context;
    for (const uint32_t stage : {0u, 1u, 8u, 0xffffffffu}) {
        EXPECT_FALSE(AssembleStageSource(project, context, stage, "#version 460")) << stage;
    }
}

TEST_F(Expansion, IncludeLines) {
    AddFile(QStringLiteral("x"), "X1\nX2\n\n");
    AddFile(QStringLiteral("empty"), "");
    struct Case {
        const char* what;
        QByteArray text;
        bool succeeds;
        QByteArray expected;
    };
    const Case cases[] = {
        {"the line vanishes with its line end", "a\n#include \"x\" // why\nb\n", true, "a\nX1\nX2\nb\n"},
        {"at the very end, no line end", "#include\t \"x\"", true, "X1\nX2\n"},
        {"twice", "#include \"x\"\n#include \"x\"\nb", true, "X1\nX2\nb"},
        {"missing", "a\n#include \"none\"\nb", true, "a\nb"},
        {"empty file", "#include \"empty\"\nb", true, "b"},
        {"empty name", "#include \"\"\nb", true, "b"},
        {"a folder", "#include \"/\"\nb", true, "b"},
        {"a device", "#include \"/dev/zero\"\nb", true, "b"},
        {"no blank, so no include", "#include\"x\"\nb", true, "#include\"x\"\nb"},
        {"not at the start of a line", "a #include \"x\"\n", true, "a #include \"x\"\n"},
        {"comment opened by the line itself is gone with it", "#include \"x\" /*\n#include \"y\"\n", true,
         "X1\nX2\n"},
        {"in a block comment", "/*\n#include \"x\"\n  #include <\n*/\n", true,
         "/*\n#include \"x\"\n  #include <\n*/\n"},
        {"in a line that ends the comment", "/*\n#include \"x\" */\n", true, "/*\n#include \"x\" */\n"},
        {"behind a one-line block comment", "/* c */\n#include \"x\"\n", true, "/* c */\nX1\nX2\n"},
        {"behind a comment of many lines", "/*\n\n**/\n#include \"x\"\n", true, "/*\n\n**/\nX1\nX2\n"},
        {"one star cannot open and close", "/*/\n#include \"x\"\n*/", true, "/*/\n#include \"x\"\n*/"},
        {"a line comment opens a block comment", "//*\n#include \"x\"\n", true, "//*\n#include \"x\"\n"},
        {"a closing mark alone", "*/\n#include \"x\"\n", true, "*/\nX1\nX2\n"},
        {"a slash at a line's end, a star at the next start", "/\n*\n#include \"x\"\n", true,
         "/\n*\nX1\nX2\n"},
        {"indented by a blank", "a\n #include \"x\"\n", false, ""},
        {"indented by a tab", "\t#include \"x\"\n", false, ""},
        {"angle brackets", "#include <x>\n", false, ""},
        {"no name", "#include \n", false, ""},
        {"no closing quote", "#include \"x\n", false, ""},
        {"a name of 260 characters", "#include \"" + QByteArray(260, 'n') + "\"\nb", true, "b"},
        {"a name of 261", "#include \"" + QByteArray(261, 'n') + "\"\nb", false, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Expand(c.text), c.succeeds) << c.what;
        if (!c.succeeds) continue;
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
    ASSERT_THAT(NamesOf(context), testing::ElementsAre("PIECE", path + "/outer.glsl", path + "/inner.glsl"));
    const int expected[3][3] = {{0, 1, 7}, {1, 2, 6}, {2, 3, 5}};
    for (size_t i = 0; i < 3; ++i) {
        const IncludedFile& row = context.includedFiles[i];
        EXPECT_THAT((std::array{row.depth, row.firstLine, row.endLine}),
                    testing::ElementsAreArray(expected[i]));
    }
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
    for (int i = 0; i < 40; ++i) {
        AddFile(QString::number(i), "#include \"" + QByteArray::number(i + 1) + "\"\nend");
    }
    AddFile(QStringLiteral("40"), "end");
    EXPECT_TRUE(Expand("#include \"9\"\n"));
    EXPECT_EQ(context.includedFiles.size(), 32u);
    EXPECT_FALSE(Expand("#include \"8\"\n"));
}

TEST_F(Expansion, ManyLinesAndCommentsTakeLinearTime) {
    QByteArray text;
    for (int i = 0; i < 50'000; ++i)
        text += "/* c\n*/ //\n";
    text += QByteArray(500'000, '*');
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(Expand(text));
    EXPECT_EQ(output, text);
    // Takes some milliseconds; anything quadratic takes minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
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
