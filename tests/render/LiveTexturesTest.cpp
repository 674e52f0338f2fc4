// Audio, webcam and palette textures, as shaders and the driver see what was delivered.
#include "render/LiveTextures.h"

#include <gtest/gtest.h>

#include "media/LiveFeeds.h"
#include "support/Engine.h"

namespace pixelgrove {
namespace {

using test::Engine;
using test::Pixel;
using test::SetKind;

TEST(LiveTextures, AudioShowsTheLatestBlockInEveryFrame) {
    Engine engine;
    SetKind(engine.Channel(kStageImage, 2), kChannelAudio);
    PublishAudioBlock({});
    ASSERT_TRUE(
        engine.Play("void mainImage(out vec4 c, in vec2 p) { c = texelFetch(iChannel2, ivec2(p), 0); }",
                    kAudioColumns, kAudioRows));
    EXPECT_EQ(engine.Context().project.stages[kStageImage].channelResolution[2],
              (std::array<float, 3>{512, 2, 1}));
    EXPECT_EQ(engine.ReadFirst()[0], 0.0f);

    for (const int step : {3, 5}) {
        AudioBlock block;
        for (size_t i = 0; i < block.size(); ++i)
            block[i] = uint8_t(step * i + i / 512);
        PublishAudioBlock(block);
        ASSERT_TRUE(engine.Draw(1));
        const std::vector<Pixel> pixels = engine.Read(kStageImage);
        // The texture keeps 7 bits of each byte.
        for (size_t i = 0; i < block.size(); ++i)
            ASSERT_NEAR(pixels[i][0] * 255, block[i], 1.1f) << step << ": " << i;
    }
    PublishAudioBlock({});
}

// Red counts the columns, green the rows from the bottom, in steps that show single pixels; blue tells
// pictures apart.
BitmapRef CameraPicture(int width, int height, bool bottomUp, int blue) {
    auto picture = CreateBitmap(width, height, 32, bottomUp);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint8_t pixel[4] = {uint8_t(blue), uint8_t(y), uint8_t(x), uint8_t(x / 256 * 100 + 50)};
            std::memcpy(picture->Row(bottomUp ? y : height - 1 - y) + 4 * x, pixel, 4);
        }
    }
    return picture;
}

class Webcam : public testing::Test {
  protected:
    void SetUp() override {
        PublishCameraPicture(nullptr);
        SetCameraOpener([this] { ++openings; });
        engine.SetText(kStageImage,
                       "void mainImage(out vec4 c, in vec2 p) { ivec2 at[4] = ivec2[4](ivec2(0), "
                       "ivec2(1279, 719), ivec2(7, 4), ivec2(640, 360)); c = texelFetch(iChannel0, "
                       "at[int(p.x)], 0); }");
        SetKind(engine.Channel(kStageImage, 0), kChannelWebcam);
        engine.SetText(kStageBufferA, "void mainImage(out vec4 c, in vec2 p) { c = texture(iChannel1, p); }");
        SetKind(engine.Channel(kStageBufferA, 1), kChannelWebcam);
        ASSERT_EQ(engine.Start(4, 1).result, CompileResult::Good);
    }
    void TearDown() override {
        SetCameraOpener({});
        PublishCameraPicture(nullptr);
    }
    std::array<int, 4> Shown(size_t place) {
        std::array<int, 4> bytes{};
        const Pixel pixel = engine.Read(kStageImage)[place];
        for (size_t i = 0; i < 4; ++i)
            bytes[i] = int(std::lround(pixel[i] * 255));
        return bytes;
    }
    // Frames until a picture of this blue is shown; 0 for more than 40.
    int FramesUntil(int blue) {
        for (int frames = 1; frames <= 40; ++frames) {
            engine.Draw(1);
            if (Shown(0)[2] == blue) return frames;
        }
        return 0;
    }

    Engine engine;
    int openings = 0;
    using Bytes = std::array<int, 4>;
};

TEST_F(Webcam, TakesAPictureEvery16FramesAndKeepsItBetween) {
    EXPECT_EQ(engine.Context().project.stages[kStageImage].channelResolution[0],
              (std::array<float, 3>{1280, 720, 1}));
    EXPECT_EQ(openings, 1) << "one camera for both channels";
    engine.Draw(20);
    EXPECT_EQ(Shown(0), (Bytes{0, 0, 0, 0})) << "blank without a camera";

    PublishCameraPicture(CameraPicture(640, 480, false, 9));
    const int first = FramesUntil(9);
    EXPECT_GE(first, 1);
    EXPECT_LE(first, 16);
    for (const int blue : {20, 30}) {
        PublishCameraPicture(CameraPicture(640, 480, false, blue + 1));  // never looked at
        PublishCameraPicture(CameraPicture(640, 480, false, blue));
        EXPECT_EQ(FramesUntil(blue), 16);
    }
    PublishCameraPicture(nullptr);
    engine.Draw(32);
    EXPECT_EQ(Shown(0)[2], 30) << "a camera that gives nothing leaves the last picture";
}

TEST_F(Webcam, ScalesAFixedAreaOfEveryPictureToTheTexture) {
    int blue = 100;
    for (const bool bottomUp : {false, true}) {
        PublishCameraPicture(CameraPicture(640, 480, bottomUp, ++blue));
        ASSERT_NE(FramesUntil(blue), 0);
        EXPECT_EQ(Shown(0), (Bytes{0, 0, blue, 50}));
        EXPECT_EQ(Shown(1), (Bytes{639 & 255, 479 & 255, blue, 250}));
        EXPECT_EQ(Shown(2), (Bytes{3, 2, blue, 50})) << "the nearest pixel, none between two";
        EXPECT_EQ(Shown(3), (Bytes{320 & 255, 240, blue, 150}));
    }
    // A larger picture gives 640 x 480 of it, a smaller one leaves the rest blank.
    PublishCameraPicture(CameraPicture(1000, 600, true, ++blue));
    ASSERT_NE(FramesUntil(blue), 0);
    EXPECT_EQ(Shown(1), (Bytes{639 & 255, 479 & 255, blue, 250}));
    PublishCameraPicture(CameraPicture(200, 100, true, ++blue));
    ASSERT_NE(FramesUntil(blue), 0);
    EXPECT_EQ(Shown(2), (Bytes{3, 2, blue, 50}));
    EXPECT_EQ(Shown(3), (Bytes{0, 0, 0, 0}));

    const auto cut = std::make_shared<Bitmap>(*CameraPicture(640, 480, true, 1));
    cut->bits.resize(100);
    PublishCameraPicture(cut);
    EXPECT_EQ(LatestCameraPicture(), nullptr);
    PublishCameraPicture(CreateBitmap(640, 480, 24, false));
    EXPECT_EQ(LatestCameraPicture(), nullptr);
}

// The colours of the palette's texture from its left end, 0x00RRGGBB, and what it is set to.
std::vector<uint32_t> PaletteColours(const RenderContext& context, std::vector<GLint>& parameters) {
    glBindTexture(GL_TEXTURE_2D, context.paletteTexture);
    GLint width = 0, height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    std::vector<uint32_t> colours(size_t(width) * size_t(height));
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, colours.data());
    parameters.clear();
    for (const GLenum name :
         {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER}) {
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
        parameters.push_back(value);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    for (uint32_t& colour : colours)
        colour &= 0xFFFFFF;
    return colours;
}

TEST(LiveTextures, ThePaletteIsATextureOfItsColoursInEveryFrame) {
    Engine engine;
    ASSERT_TRUE(engine.Play("void mainImage(out vec4 c, in vec2 p) { c = vec4(1); }", 4, 4));
    EXPECT_EQ(engine.Context().paletteTexture, 0u) << "none without colours";
    // The count grows, stays, shrinks, falls to none, which leaves the texture, and comes back.
    uint32_t step = 0x010305;
    for (const int count : {2048, 2048, 1, 236, 0, 236, 2048}) {
        SCOPED_TRACE(count);
        auto block = std::make_unique<PaletteBlock>();
        block->count = count;
        std::vector<uint32_t> wanted;
        for (uint32_t i = 0; i < uint32_t(count); ++i) {
            const uint32_t colour = (i * step + step) & 0xFFFFFF;
            wanted.push_back(colour);
            block->red[i] = uint8_t(colour >> 16);
            block->green[i] = uint8_t(colour >> 8);
            block->blue[i] = uint8_t(colour);
        }
        step += 0x040201;
        std::vector<GLint> parameters;
        const std::vector<uint32_t> before = PaletteColours(engine.Context(), parameters);
        UnpackPalette(*block, *Hold(*App()->palette.table));
        ASSERT_TRUE(engine.Draw(2));
        GLint bound = -1;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_TRUE(bound == 0 || GLuint(bound) != engine.Context().paletteTexture) << "no stage may read it";
        EXPECT_EQ(PaletteColours(engine.Context(), parameters), count > 0 ? wanted : before);
        EXPECT_EQ(parameters,
                  (std::vector<GLint>{GL_MIRRORED_REPEAT, GL_CLAMP_TO_EDGE, GL_LINEAR, GL_LINEAR}));
        EXPECT_EQ(engine.Context().paletteWidth, uint32_t(count > 0 ? count : 236));
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

}  // namespace
}  // namespace pixelgrove
