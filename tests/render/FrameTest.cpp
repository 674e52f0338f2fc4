// What a frame computes: time, frame numbers, feedback order, cube rays, resizing, uniforms. Every value here
// was worked out on paper.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/FrameRenderer.h"
#include "render/GlSetup.h"
#include "render/InputState.h"
#include "render/PastFrames.h"
#include "support/Engine.h"

namespace pixelgrove {
namespace {

using test::Bits;
using test::Engine;
using test::Pixel;

TEST(Frame, TimeIsASumOfSingleSteps) {
    Engine engine;
    engine.SetText(
        kStageImage,
        "void mainImage(out vec4 c, in vec2 p) { c = vec4(iTime, iTimeDelta, iChannelTime[2], 1.0); }");
    ASSERT_EQ(engine.Start(4, 4, 0.25f).result, CompileResult::Good);
    float time = 0.25f;
    for (int frame = 0; frame < 300; ++frame) {
        time += 0.03f;
        ASSERT_TRUE(engine.Draw(1));
    }
    const Pixel pixel = engine.ReadFirst();
    EXPECT_EQ(Bits(pixel[0]), Bits(time));
    EXPECT_EQ(Bits(pixel[1]), Bits(0.03f));
    EXPECT_EQ(Bits(pixel[2]), Bits(time));
}

TEST(Frame, NumberCountsFromTwoZeroesAndRestartsOnResize) {
    Engine engine;
    engine.SetText(kStageImage,
                   "void mainImage(out vec4 c, in vec2 p) { c = vec4(float(iFrame), iResolution.xy, "
                   "iChannelResolution[0].x); }");
    engine.Connect(kStageImage, 0, kStageImage);
    ASSERT_EQ(engine.Start(6, 4).result, CompileResult::Good);
    for (const float expected : {0.0f, 0.0f, 1.0f, 2.0f}) {
        ASSERT_TRUE(engine.Draw(1));
        EXPECT_EQ(engine.ReadFirst()[0], expected);
    }
    engine.Surface().Resize({10, 8});
    for (const float expected : {0.0f, 0.0f, 1.0f}) {
        ASSERT_TRUE(engine.Draw(1));
        const Pixel pixel = engine.ReadFirst();
        EXPECT_EQ(pixel[0], expected);
        EXPECT_EQ(pixel[1], 10.0f);
        EXPECT_EQ(pixel[2], 8.0f);
        EXPECT_EQ(pixel[3], 6.0f) << "a buffer channel keeps the size of the play's start";
    }
    EXPECT_EQ(engine.Read(kStageImage).size(), 80u);
    engine.Surface().Resize({0, 0});
    const float time = engine.Context().playTime;
    EXPECT_FALSE(engine.Draw(1)) << "a window without area draws nothing";
    EXPECT_EQ(engine.Context().playTime, time);
}

TEST(Frame, FirstFreeChannelReadsTheStagesLastFrame) {
    Engine engine;
    engine.Connect(kStageImage, 0, kStageBufferA);  // taken, so channel 1 is the first free one
    ASSERT_TRUE(engine.Play(
        "void mainImage(out vec4 c, in vec2 p) {"
        "  c = iFrame == 0 ? vec4(1.0) : texelFetch(iChannel1, ivec2(p), 0) + vec4(1.0, 10.0, 0.0, 0.0); }",
        3, 3, 2 + 5));
    EXPECT_EQ(engine.ReadFirst(), (Pixel{6, 51, 1, 1}));
    EXPECT_EQ(engine.Channel(kStageImage, 1).kind, kChannelUnused)
        << "the editing form keeps its free channel";
}

TEST(Frame, StagesReadEarlierOnesNowAndLaterOnesAFrameAgo) {
    Engine engine;
    // B writes the frame's own count; A hands on what it reads of B; Image shows both.
    engine.SetText(kStageBufferA,
                   "void mainImage(out vec4 c, in vec2 p) { c = texelFetch(iChannel0, ivec2(p), 0); }");
    engine.SetText(kStageBufferB,
                   "void mainImage(out vec4 c, in vec2 p) { c = vec4(100.0 + float(iFrame)); }");
    engine.Connect(kStageBufferA, 0, kStageBufferB);
    engine.Connect(kStageImage, 0, kStageBufferA);
    engine.Connect(kStageImage, 1, kStageBufferB);
    ASSERT_TRUE(
        engine.Play("void mainImage(out vec4 c, in vec2 p) { c = vec4(texelFetch(iChannel0, ivec2(p), 0).x, "
                    "texelFetch(iChannel1, ivec2(p), 0).x, 0.0, 0.0); }",
                    2, 2, 2));
    for (int frame = 1; frame < 5; ++frame) {
        ASSERT_TRUE(engine.Draw(1));
        const Pixel pixel = engine.ReadFirst();
        EXPECT_EQ(pixel[0], 100.0f + float(frame - 1)) << "this frame's A, which read the last frame's B";
        EXPECT_EQ(pixel[1], 100.0f + float(frame)) << "this frame's B";
    }
}

TEST(Frame, CubeFacesFollowTheCornerTable) {
    Engine engine;
    engine.SetText(kStageCubeA,
                   "void mainCubemap(out vec4 c, in vec2 p, in vec3 ro, in vec3 rd) { c = vec4(rd, "
                   "iResolution.x + ro.x); }");
    // A look-up along (x, y, z) finds the ray (x, -y, -z).
    engine.SetText(
        kStageImage,
        "void mainImage(out vec4 c, in vec2 p) {"
        "  vec3 d = normalize(vec3(0.3, 0.9, -0.2)); if (p.x > 1.0) d = normalize(vec3(-0.8, 0.1, 0.5));"
        "  if (p.x > 2.0) d = normalize(vec3(0.1, -0.2, 0.7));"
        "  c = vec4(texture(iChannel0, d).xyz - d * vec3(1.0, -1.0, -1.0), 1.0); }");
    engine.Connect(kStageImage, 0, kStageCubeA);
    ASSERT_EQ(engine.Start(3, 1).result, CompileResult::Good);
    ASSERT_TRUE(engine.Draw(1));
    for (const Pixel& pixel : engine.Read(kStageImage)) {
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(pixel[size_t(i)], 0.0f, 0.003f);
    }
    // The ray through the lower left corner of each face is corner 0 of that face.
    const float corners[6][3] = {{1, -1, -1}, {-1, -1, 1},  {-1, -1, 1},
                                 {-1, 1, -1}, {-1, -1, -1}, {1, -1, 1}};
    for (int face = 0; face < 6; ++face) {
        const Pixel pixel = engine.Read(kStageCubeA, face).at(0);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(pixel[size_t(i)], corners[face][i] / std::sqrt(3.0f), 0.002f) << "face " << face;
        }
        EXPECT_EQ(pixel[3], 1024.0f);
    }
}

TEST(Frame, AssertionsPaintTheirColour) {
    Engine engine;
    ASSERT_TRUE(
        engine.Play("void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5); st_assert(p.x > 1.0); "
                    "st_assert(p.x < 2.0, 1); }",
                    3, 1));
    const std::vector<Pixel> pixels = engine.Read(kStageImage);
    EXPECT_EQ(pixels[0], (Pixel{1, 0, 0, 1}));
    EXPECT_EQ(pixels[1], (Pixel{0.5f, 0.5f, 0.5f, 0.5f}));
    EXPECT_EQ(pixels[2], (Pixel{0, 1, 0, 1}));
}

TEST(GlContextChoice, CoreWhereThePlainOneIsTooOld) {
    struct Fake : GlContext {
        explicit Fake(GlVersion what) : version(what) {}
        bool MakeCurrent() override { return true; }
        void DoneCurrent() override {}
        void SwapBuffers() override {}
        bool HasDrawable() const override { return false; }
        void Detach() override {}
        GlVersion version;
    };
    const struct {
        GlVersion plain, core;  // what the system gives
        GlVersion chosen;
    } cases[] = {
        {{4, 5}, {4, 6}, {4, 5}}, {{4, 2}, {4, 6}, {4, 2}}, {{4, 1}, {4, 3}, {4, 3}},
        {{3, 1}, {4, 6}, {4, 6}}, {{3, 1}, {4, 1}, {3, 1}}, {{0, 0}, {4, 5}, {4, 5}},
    };
    for (const auto& item : cases) {
        const auto make = [&item](std::optional<GlVersion> core) -> std::unique_ptr<GlContext> {
            const GlVersion most = core ? item.core : item.plain;
            if (most < core.value_or(GlVersion{1, 0})) return nullptr;
            return std::make_unique<Fake>(most);
        };
        const auto chosen =
            ChooseGlContext(make, [](GlContext& context) { return static_cast<Fake&>(context).version; });
        ASSERT_TRUE(chosen);
        EXPECT_TRUE(static_cast<Fake&>(*chosen).version == item.chosen) << item.plain.major;
    }
}

TEST(Frame, MultisampledTargetsAreResolvedOnReadBack) {
    Engine engine;
    engine.SetText(
        kStageImage,
        "void mainImage(out vec4 c, in vec2 p) { c = vec4(p.x < 2.0 ? 1.0 : 0.0, 0.2, 0.4, 1.0); }");
    ASSERT_EQ(engine.Start(4, 2, 0.1f, 2).result, CompileResult::Good);
    ASSERT_TRUE(engine.Draw(1));
    const auto bitmap = CreateFrameBitmap(4, 2);
    ASSERT_TRUE(ReadBackStage(engine.Context(), kStageImage, *bitmap));
    const uint8_t* row = bitmap->Row(0);
    EXPECT_EQ((std::array<int, 4>{row[0], row[1], row[2], row[12 + 2]}),
              (std::array<int, 4>{102, 51, 255, 0}));
    const auto wrongSize = CreateFrameBitmap(5, 2);
    EXPECT_FALSE(ReadBackStage(engine.Context(), kStageImage, *wrongSize));
    EXPECT_FALSE(ReadBackStage(engine.Context(), kStageBufferA, *bitmap));
    engine.Surface().Resize({5, 2});
    ASSERT_TRUE(engine.Draw(1));
    ASSERT_TRUE(ReadBackStage(engine.Context(), kStageImage, *wrongSize)) << "another size after the first";
    EXPECT_EQ(wrongSize->Row(1)[16], 102);
    EXPECT_EQ(wrongSize->Row(1)[4 + 2], 255);
}

TEST(Frame, FramesThatNoStageMissesMayBeLeftOut) {
    const auto play = [](int frames, bool skips) {
        Engine engine;
        engine.SetText(kStageBufferA,
                       "void mainImage(out vec4 c, in vec2 p) { c = vec4(sin(p * iTime), iFrame, 1.0); }");
        // Two stages set one texture's sampler otherwise, and its smaller levels stay those of the first
        // frames.
        engine.Connect(kStageBufferA, 0, kStageBufferA);
        engine.Connect(kStageImage, 0, kStageBufferA);
        engine.Channel(kStageImage, 0).filter = gl::kLinearMipmapLinear;
        engine.SetText(kStageImage,
                       "void mainImage(out vec4 c, in vec2 p) { c = texture(iChannel0, p / 5.0) + "
                       "textureLod(iChannel0, vec2(0.3), 2.0); }");
        EXPECT_EQ(engine.Start(8, 8).result, CompileResult::Good);
        const std::optional<PastUse> past = FindPastUse(engine.Context());
        EXPECT_TRUE(past && past->stage == kStageNone && past->readsChannels);
        for (int frame = 1; frame <= frames; ++frame) {
            if (skips && frame > 2 && frame < frames)
                SkipStages(engine.Context());
            else
                EXPECT_TRUE(engine.Draw(1));
        }
        return engine.Read(kStageImage);
    };
    for (const int frames : {3, 6, 7})
        EXPECT_EQ(play(frames, true), play(frames, false)) << frames;
}

TEST(Frame, StagesThatNeedPastFramesAreFound) {
    const struct {
        const char* image;
        uint32_t stage;
        bool reads;
    } rows[] = {
        {"c = vec4(iTime);", kStageNone, false},
        {"c = texture(iChannel0, p);", kStageNone, true},
        {"c = texture(iChannel1, p);", kStageImage, true},  // its own
        {"if (p.x < 1.0) discard; c = vec4(1.0);", kStageImage, false},
        {"c = vec4(1.0); // discards", kStageNone, false},
    };
    for (const auto& row : rows) {
        Engine engine;
        engine.SetText(kStageBufferA, "void mainImage(out vec4 c, in vec2 p) { c = vec4(iTime); }");
        engine.Connect(kStageBufferA, 0, kStageImage);  // a later stage, but not looked at
        engine.Connect(kStageImage, 0, kStageBufferA);
        engine.SetText(kStageImage,
                       (std::string("void mainImage(out vec4 c, in vec2 p) { ") + row.image + "\n}").c_str());
        ASSERT_EQ(engine.Start(4, 4).result, CompileResult::Good) << row.image;
        const std::optional<PastUse> past = FindPastUse(engine.Context());
        ASSERT_TRUE(past) << row.image;
        EXPECT_EQ(past->stage, row.stage) << row.image;
        EXPECT_EQ(past->readsChannels, row.reads) << row.image;
    }
}

}  // namespace
}  // namespace pixelgrove
