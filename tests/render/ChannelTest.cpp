// Channel textures: orientation, wrap, filter, depths, cube maps, volumes, keyboard.
#include "render/ChannelTextures.h"

#include <gtest/gtest.h>

#include "render/InputState.h"
#include "support/Engine.h"

namespace pixelgrove {
namespace {

using test::Engine;
using test::Pixel;
using test::SetKind;

constexpr const char* kShowChannel0 =
    "void mainImage(out vec4 c, in vec2 p) { c = texture(iChannel0, p / iResolution.xy); }";

// A top-down picture of width by height whose red grows to the right and green downward, 10 a step.
BitmapRef MakePicture(int width, int height, int bitsPerPixel) {
    auto bitmap = CreateBitmap(width, height, bitsPerPixel, false);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t* pixel = bitmap->Row(y) + x * bitsPerPixel / 8;
            if (bitsPerPixel == 8) {
                pixel[0] = uint8_t(10 * x + 40 * y);
                continue;
            }
            pixel[0] = 7;
            pixel[1] = uint8_t(10 * y);
            pixel[2] = uint8_t(10 * x);
            if (bitsPerPixel == 32) pixel[3] = 255;
        }
    }
    return bitmap;
}

void SetPicture(ChannelInput& channel, const BitmapRef& picture, bool vflip, uint32_t filter = gl::kNearest) {
    SetKind(channel, kChannelTexture);
    channel.faces[0] = picture;
    channel.vflip = vflip;
    channel.filter = filter;
}

int Byte(float value) {
    return int(std::lround(value * 255.0f));
}

TEST(Channel, RowsStandUprightWithVflipAndUpsideDownWithout) {
    for (const int bits : {8, 24, 32}) {
        for (const bool vflip : {true, false}) {
            Engine engine;
            SetPicture(engine.Channel(kStageImage, 0), MakePicture(4, 3, bits), vflip);
            ASSERT_TRUE(engine.Play(kShowChannel0, 4, 3));
            const std::vector<Pixel> pixels = engine.Read(kStageImage);
            for (int y = 0; y < 3; ++y) {
                const int fileRow = vflip ? 2 - y : y;
                for (int x = 0; x < 4; ++x) {
                    const Pixel& pixel = pixels[size_t(4 * y + x)];
                    const int red = bits == 8 ? 10 * x + 40 * fileRow : 10 * x;
                    const int green = bits == 8 ? 0 : 10 * fileRow;
                    EXPECT_EQ(Byte(pixel[0]), red)
                        << bits << " bits, vflip " << vflip << " at " << x << "," << y;
                    EXPECT_EQ(Byte(pixel[1]), green);
                    EXPECT_EQ(Byte(pixel[2]), bits == 8 ? 0 : 7);
                }
            }
            EXPECT_EQ(engine.Context().project.stages[kStageImage].channelResolution[0],
                      (std::array<float, 3>{4, 3, 1}));
        }
    }
}

TEST(Channel, WrapAndFilterModes) {
    // One row of four columns 0, 10, 20, 30, looked up one and a half columns beyond the right edge.
    const struct {
        uint32_t wrap, filter;
        float u;
        float expected;
    } cases[] = {
        {gl::kClampToEdge, gl::kNearest, 1.375f, 30},    {gl::kRepeat, gl::kNearest, 1.375f, 10},
        {gl::kMirroredRepeat, gl::kNearest, 1.375f, 20}, {gl::kClampToEdge, gl::kLinear, 0.5f, 15},
        {gl::kClampToEdge, gl::kNearest, -0.4f, 0},      {gl::kRepeat, gl::kLinear, 0.0f, 15},
        {gl::kMirroredRepeat, gl::kLinear, 1.0f, 30},
    };
    for (const auto& item : cases) {
        Engine engine;
        const std::string text = "void mainImage(out vec4 c, in vec2 p) { c = texture(iChannel0, vec2(" +
                                 std::to_string(item.u) + ", 0.5)); }";
        SetPicture(engine.Channel(kStageImage, 0), MakePicture(4, 1, 32), true, item.filter);
        engine.Channel(kStageImage, 0).wrap = item.wrap;
        ASSERT_TRUE(engine.Play(text, 2, 2));
        EXPECT_NEAR(engine.ReadFirst()[0] * 255, item.expected, 0.6f) << text << " wrap " << item.wrap;
    }
}

TEST(Channel, MipmapsAreMade) {
    Engine engine;
    SetPicture(engine.Channel(kStageImage, 0), MakePicture(4, 4, 32), true, gl::kLinearMipmapLinear);
    ASSERT_TRUE(engine.Play(
        "void mainImage(out vec4 c, in vec2 p) { c = textureLod(iChannel0, vec2(0.5), 2.0); }", 2, 2));
    EXPECT_NEAR(engine.ReadFirst()[0] * 255, 15.0f, 1.0f);  // the mean of 0, 10, 20, 30
}

TEST(Channel, CubemapTakesSixFacesAndVflipSwapsTopAndBottom) {
    for (const bool vflip : {false, true}) {
        Engine engine;
        engine.SetText(kStageImage,
                       "void mainImage(out vec4 c, in vec2 p) { vec3 d[6] = vec3[6](vec3(1,0.5,0), "
                       "vec3(-1,0.5,0), vec3(0,1,-0.5), vec3(0,-1,0.5), vec3(0,0.5,1), vec3(0,0.5,-1)); "
                       "c = texture(iChannel0, d[int(p.x)]); }");  // the second row of every face
        ChannelInput& channel = engine.Channel(kStageImage, 0);
        SetKind(channel, kChannelCubemap);
        channel.filter = gl::kNearest;
        channel.vflip = vflip;
        for (int face = 0; face < 6; ++face) {
            auto picture = CreateBitmap(4, 4, 32, false);
            for (int row = 0; row < 4; ++row)
                std::fill_n(picture->Row(row), picture->StrideBytes(), uint8_t(20 * (face + 1) + row));
            channel.faces[size_t(face)] = picture;
        }
        ASSERT_EQ(engine.Start(6, 1).result, CompileResult::Good);
        ASSERT_TRUE(engine.Draw(1));
        const std::vector<Pixel> pixels = engine.Read(kStageImage);
        const int order[2][6] = {{0, 1, 2, 3, 4, 5}, {0, 1, 3, 2, 4, 5}};
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(Byte(pixels[size_t(i)][0]), 20 * (order[vflip][i] + 1) + (vflip ? 2 : 1));

        channel.faces[3] = nullptr;  // a face whose file was missing
        EXPECT_EQ(engine.Start(6, 1).result, CompileResult::Failed);
    }
}

TEST(Channel, ASamplerIsAppliedAnewOnlyWhileItsCountdownRuns) {
    Engine engine;
    SetPicture(engine.Channel(kStageImage, 0), MakePicture(4, 1, 32), true, gl::kNearest);
    engine.Channel(kStageImage, 0).wrap = gl::kClampToEdge;
    ASSERT_TRUE(engine.Play(
        "void mainImage(out vec4 c, in vec2 p) { c = texture(iChannel0, vec2(1.5, 0.5)); }", 2, 2, 3));
    EXPECT_EQ(Byte(engine.ReadFirst()[0]), 30);

    ChannelInput& running = engine.Context().project.stages[kStageImage].channels[0];
    EXPECT_EQ(running.samplerCountdown, 0u);
    running.wrap = gl::kRepeat;
    running.filter = gl::kLinear;
    ASSERT_TRUE(engine.Draw(3));
    EXPECT_EQ(Byte(engine.ReadFirst()[0]), 30);
    running.samplerCountdown = 2;
    ASSERT_TRUE(engine.Draw(1));
    EXPECT_EQ(Byte(engine.ReadFirst()[0]), 15);
    EXPECT_EQ(running.samplerCountdown, 1u);
    ASSERT_TRUE(engine.Draw(2));
    EXPECT_EQ(running.samplerCountdown, 0u);
}

TEST(Channel, ARefusedSourceKeepsItsKindAndNothingElse) {
    Engine engine;
    ASSERT_TRUE(engine.Play(kShowChannel0, 2, 2));
    RenderContext& context = engine.Context();
    ChannelInput source;
    SetPicture(source, MakePicture(4, 4, 32), true);
    ASSERT_TRUE(SetChannel(context, kStageBufferA, 3, source));
    EXPECT_FALSE(SetChannel(context, kStageCount, 0, source));
    EXPECT_FALSE(SetChannel(context, kStageBufferA, kChannelCount, source));

    const auto odd = std::make_shared<Bitmap>(*source.faces[0]);
    odd->bitsPerPixel = 16;  // no form for textures
    source.faces[0] = odd;
    EXPECT_TRUE(SetChannel(context, kStageBufferA, 2, source));
    EXPECT_FALSE(UploadChannelTexture(context, kStageBufferA, 2));

    ChannelInput& channel = context.project.stages[kStageBufferA].channels[3];
    for (const uint32_t kind :
         {kChannelTexture, kChannelCubemap, kChannelVolume, kChannelBuffer, kChannelCubeA}) {
        ChannelInput empty;
        empty.kind = kind;
        empty.sourceStage = kStageCount;
        empty.fileName = QStringLiteral("gone.png");
        EXPECT_FALSE(SetChannel(context, kStageBufferA, 3, empty)) << kind;
        EXPECT_EQ(channel.kind, kind);
        EXPECT_FALSE(channel.faces[0] || channel.volumeData || channel.sourceStage >= 0) << kind;
        EXPECT_FALSE(UploadChannelTexture(context, kStageBufferA, 3));
    }
    ChannelInput unknown;
    unknown.kind = 9;
    EXPECT_FALSE(SetChannel(context, kStageBufferA, 3, unknown));
}

VolumeRef MakeVolume(uint32_t x, uint32_t y, uint32_t z, uint32_t kind, std::vector<uint8_t> samples) {
    std::vector<uint8_t> file = {'B', 'I', 'N', 0};
    for (const uint32_t value : {x, y, z, kind}) {
        for (int shift = 0; shift < 32; shift += 8)
            file.push_back(uint8_t(value >> shift));
    }
    file.insert(file.end(), samples.begin(), samples.end());
    return std::make_shared<const std::vector<uint8_t>>(std::move(file));
}

TEST(Channel, VolumesStandStraightOrFailTheCompile) {
    const auto start = [](Engine& engine, const VolumeRef& volume, int width) {
        engine.SetText(
            kStageImage,
            "void mainImage(out vec4 c, in vec2 p) { ivec3 s = textureSize(iChannel0, 0); int i = "
            "int(p.x); c = texelFetch(iChannel0, ivec3(i % s.x, i / s.x % s.y, i / (s.x * s.y)), 0); }");
        SetKind(engine.Channel(kStageImage, 0), kChannelVolume);
        engine.Channel(kStageImage, 0).filter = gl::kNearest;
        engine.Channel(kStageImage, 0).volumeData = volume;
        return engine.Start(width, 1);
    };
    // Every sample is its place in the file: x, then y, then z.
    for (const auto& [x, y, z, kind] :
         {std::tuple{5u, 3u, 2u, 1u}, {3u, 2u, 2u, 2u}, {1u, 3u, 2u, 1u}, {8u, 2u, 2u, 1u}}) {
        std::vector<uint8_t> samples;
        for (uint32_t i = 0; i < x * y * z; ++i) {
            if (kind == 2) samples.push_back(0);
            samples.push_back(uint8_t(i));
        }
        Engine engine;
        const int count = int(x * y * z);
        ASSERT_EQ(start(engine, MakeVolume(x, y, z, kind, samples), count).result, CompileResult::Good);
        ASSERT_TRUE(engine.Draw(1));
        const std::vector<Pixel> pixels = engine.Read(kStageImage);
        for (int i = 0; i < count; ++i)
            ASSERT_NEAR(pixels[size_t(i)][0] * 255, i, 1.1) << x << ' ' << z << " at " << i;
    }
    const std::vector<uint8_t> bytes(64, 9);
    Engine engine;
    EXPECT_EQ(start(engine, MakeVolume(4, 2, 2, 4, bytes), 2).result, CompileResult::Good);
    for (const VolumeRef& volume : {MakeVolume(4, 2, 2, 3, bytes), MakeVolume(4, 2, 2, 1, {1, 2, 3}),
                                    MakeVolume(1024, 1024, 4096, 1, bytes), VolumeRef()}) {
        const CompileOutcome outcome = start(engine, volume, 2);
        EXPECT_EQ(outcome.result, CompileResult::Failed);
        EXPECT_FALSE(outcome.failure.isEmpty()) << "a failure without a log has a sentence";
    }
}

TEST(Channel, KeyboardRowsReachTheShader) {
    Engine engine;
    SetKind(engine.Channel(kStageImage, 0), kChannelKeyboard);
    engine.SetText(kStageBufferA, kShowChannel0);
    engine.Channel(kStageBufferA, 0) = engine.Channel(kStageImage, 0);
    KeyPressed(65);  // before the play: creating the texture clears the rows
    ASSERT_TRUE(
        engine.Play("void mainImage(out vec4 c, in vec2 p) { for (int y = 0; y < 3; ++y) c[y] = "
                    "texelFetch(iChannel0, ivec2(65, y), 0).x; c.w = 0.0; }",
                    1, 2));
    EXPECT_EQ(engine.ReadFirst(), (Pixel{0, 0, 0, 0}));
    KeyReleased(65);
    KeyPressed(65);
    for (const Pixel& rows : {Pixel{1, 1, 1, 0}, Pixel{1, 1, 0, 0}}) {
        ASSERT_TRUE(engine.Draw(1));
        EXPECT_EQ(engine.ReadFirst(), rows);
        KeyPressed(65);  // auto-repeat
    }
    KeyPressed(256);
    KeyPressed(-1);  // codes of no row
    KeyReleased(65);
}

TEST(Channel, ASourceThatDoesNotExistReadsBlack) {
    // Beside a picture on channel 0, with a sampler of its type and with one of another.
    for (const auto& [source, kind, lookUp] :
         {std::tuple{kStageBufferD, kChannelBuffer, "texture(iChannel1, p)"},
          {kStageCubeA, kChannelCubeA, "texture(iChannel1, vec3(p, 1.0))"},
          {kStageCommon, kChannelBuffer, "texture(iChannel1, p)"}}) {
        Engine engine;
        const std::string text = std::string("void mainImage(out vec4 c, in vec2 p) { c = vec4(0.25) + ") +
                                 lookUp + " + 0.5 * texture(iChannel0, p); }";
        auto picture = CreateBitmap(2, 2, 32, false);
        picture->bits.assign(picture->bits.size(), 255);
        SetPicture(engine.Channel(kStageImage, 0), picture, true);
        engine.Connect(kStageImage, 1, source);
        engine.Channel(kStageImage, 1).kind = kind;
        ASSERT_TRUE(engine.Play(text, 2, 2, 3));
        EXPECT_EQ(engine.ReadFirst()[0], 0.75f) << source << lookUp;
    }
}

}  // namespace
}  // namespace pixelgrove
