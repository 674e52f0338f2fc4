// From the driver's log to the user's lines.
#include <gtest/gtest.h>

#include "support/Engine.h"

namespace pixelgrove {
namespace {

using test::Engine;

constexpr const char* kGoodImage = "void mainImage(out vec4 c, in vec2 p) { c = vec4(1.0); }";

TEST(Compile, MistakesNameTheStageAndTheLine) {
    const struct {
        const char* name;
        uint32_t stage;  // where the broken text stands, and whose error text names it
        const char* text;
        std::vector<const char*> expected;
    } cases[] = {
        {"image line 4",
         kStageImage,
         "void mainImage(out vec4 c, in vec2 p)\n{\n    float x = 1.0;\n    c = vec4(y);\n}",
         {"Image(4): error: "}},
        {"buffer",
         kStageBufferC,
         "\nvoid mainImage(out vec4 c, in vec2 p)\n{\n    c = vec4(1.0)\n}",
         {"Buffer C(5): error: "}},
        {"common",
         kStageCommon,
         "float f() {\n  return 1.0;\n}\nfloat g() { return h; }\n",
         {"Common(4): error: "}},
        {"cube",
         kStageCubeA,
         "void mainCubemap(out vec4 c, in vec2 p, in vec3 o, in vec3 d)\n{ c = d; }",
         {"Cube A(2): error: "}},
        {"preprocessor",
         kStageImage,
         "void mainImage(out vec4 c, in vec2 p)\n{\n#if NOT(\n#endif\n c = vec4(1.0);\n}",
         {"Image(3): "}},
        {"macro of the text behind",
         kStageImage,
         "float f() { return 1.0; }\n#define color 3\nvoid mainImage(out vec4 c, in vec2 p) { c = vec4(1.0); "
         "}",
         {"SUFFIX(3): ", "Image(2): note: "}},
        {"missing file",
         kStageImage,
         "\n#include \"gone.glsl\"\nvoid mainImage(out vec4 c, in vec2 p)\n{ c = gone(); }",
         {"Image(2): note: no file was found for this line: #include \"gone.glsl\"", "Image(3): error: "}},
        {"unset channel",
         kStageImage,
         "void mainImage(out vec4 c, in vec2 p)\n{\n c = texture(iChannel2, p);\n}",
         {"Image(3): error: ", "iChannel2 "}},
        {"control's value",
         kStageImage,
         "\n#define W bad // width [0.0..1.0]\nvoid mainImage(out vec4 c, in vec2 p)\n{ c = vec3(W); }",
         {"Image(4): error: ",
          "Image(2): note: the control \"width \" put its value in place of \"#define W bad // width "
          "[0.0..1.0]\""}},
        {"control's value in Common",
         kStageCommon,
         "#define W a // width [0.0..1.0]\nvec2 f() { return W; }",
         {"Common(2): error: ", "Common(1): note: the control \"width \" "}},
    };
    for (const auto& item : cases) {
        Engine engine;
        if (item.stage != kStageImage) engine.SetText(kStageImage, kGoodImage);
        engine.SetText(item.stage, item.text);
        const CompileOutcome outcome = engine.Start(8, 8);
        ASSERT_EQ(outcome.result, CompileResult::Failed) << item.name;
        const StageErrorArray errors = ReportOf(engine.Context(), outcome, engine.Run().request.baked).errors;
        for (const char* expected : item.expected) {
            EXPECT_TRUE(TextOf(errors[item.stage]).contains(QString::fromLatin1(expected)))
                << item.name << ": " << TextOf(errors[item.stage]).toStdString();
        }
        for (uint32_t other = 0; other < kStageCount; ++other) {
            if (other == item.stage) continue;
            EXPECT_TRUE(TextOf(errors[other]).trimmed().isEmpty()) << item.name << other;
        }
    }
}

TEST(Compile, FailuresWithoutALogHaveASentence) {
    const char* texts[] = {
        "  #include \"x.glsl\"\nvoid mainImage(out vec4 c, in vec2 p) { c = vec4(1.0); }",      // indented
        "vec4 declaredOnly();\nvoid mainImage(out vec4 c, in vec2 p) { c = declaredOnly(); }",  // doesn't
                                                                                                // link
        "#define A 1 // a [0.0..1.0]\nvec4 declaredOnly();\nvoid mainImage(out vec4 c, in vec2 p) { c = "
        "declaredOnly(); }",
    };
    for (const char* text : texts) {
        Engine engine;
        engine.SetText(kStageImage, text);
        const CompileOutcome outcome = engine.Start(8, 8);
        ASSERT_EQ(outcome.result, CompileResult::Failed);
        const FailureReport report = ReportOf(engine.Context(), outcome, engine.Run().request.baked);
        EXPECT_TRUE(!report.failure.empty() || !report.errors[kStageImage].empty()) << text;
        EXPECT_EQ(TextOf(report.failure).contains(QLatin1String("Image(1): note: the control \"a \" ")),
                  text[0] == '#');
    }
}

TEST(Compile, ReservedWordsOfTheServiceAndCodePageTextCompile) {
    Engine engine;
    SetDocumentText(App()->project.documents[kStageImage],
                    QStringLiteral("// caf\u00e9 \u4e2d\r\nvoid mainImage(out vec4 c, in vec2 p)\r\n{ float "
                                   "packed = 0.5; float char = 0.25;"
                                   " c = vec4(packed, char, 0.0, 1.0); }\r\n\r\n"));
    App()->project.documents[kStageImage].hasText = true;
    ASSERT_EQ(engine.Start(2, 2).result, CompileResult::Good);
    ASSERT_TRUE(engine.Draw(1));
    EXPECT_EQ(engine.ReadFirst(), (test::Pixel{0.5f, 0.25f, 0, 1}));
}

TEST(Compile, WhatIsReportedIsTheSameInBothOrders) {
    constexpr const char* kUnlinked = "vec4 f();\nvoid mainImage(out vec4 c, in vec2 p) { c = f(); }";
    constexpr const char* kUnread = "  #include \"x.glsl\"\n";
    const struct {
        const char *a, *b, *image;
        uint32_t failed;  // the first that fails
    } rows[] = {
        {kGoodImage, kGoodImage, kGoodImage, kStageNone}, {"broken", kGoodImage, "worse", kStageBufferA},
        {kGoodImage, kUnlinked, "broken", kStageBufferB}, {kGoodImage, "broken", kUnread, kStageBufferB},
        {kGoodImage, kUnread, "broken", kStageBufferB},   {kGoodImage, kGoodImage, kUnread, kStageImage},
    };
    for (const auto& row : rows) {
        QStringList reports;
        for (const CompileOrder order : {CompileOrder::OneByOne, CompileOrder::AllAtOnce}) {
            Engine engine;
            engine.SetText(kStageBufferA, row.a);
            engine.SetText(kStageBufferB, row.b);
            engine.SetText(kStageImage, row.image);
            engine.Start(2, 2);
            const CompileOutcome outcome = CompileProject(engine.Context(), {}, order);
            EXPECT_EQ(outcome.failedStage, row.failed);
            const FailureReport report = ReportOf(engine.Context(), outcome, engine.Run().request.baked);
            QString text = TextOf(report.failure);
            for (const CompileMessages& messages : report.errors)
                text += TextOf(messages) + u'|';
            reports += text;
            if (outcome.result == CompileResult::Good) {
                ASSERT_TRUE(engine.Draw(1));
                EXPECT_EQ(engine.ReadFirst(), (test::Pixel{1, 1, 1, 1}));
            }
        }
        EXPECT_EQ(reports[0], reports[1]);
    }
}

TEST(Compile, StopsBetweenStagesWhenAsked) {
    Engine engine;
    engine.SetText(kStageBufferA, kGoodImage);
    engine.SetText(kStageImage, "broken");
    ASSERT_EQ(engine.Start(2, 2).result, CompileResult::Failed);
    int asked = 0;
    EXPECT_EQ(CompileProject(engine.Context(), [&asked] { return ++asked == 2; }).result,
              CompileResult::Stopped);
    EXPECT_EQ(asked, 2);
}

}  // namespace
}  // namespace pixelgrove
