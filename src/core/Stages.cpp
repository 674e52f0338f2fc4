#include "core/Stages.h"

#include <algorithm>

#include "platform/TextScan.h"

namespace pixelgrove {

std::array<StageTabRow, kStageCount> stageTabs = {{
    {1052, 1, kStageNone},
    {1053, 0, kStageCommon},
    {1054, 0, kStageBufferA},
    {1055, 0, kStageBufferB},
    {1056, 0, kStageBufferC},
    {1057, 0, kStageBufferD},
    {1058, 0, kStageCubeA},
    {1051, 1, kStageImage},
}};

namespace {

constexpr const char* kStageNames[kStageCount] = {"+",        "Common",   "Buffer A", "Buffer B",
                                                  "Buffer C", "Buffer D", "Cube A",   "Image"};

constexpr const char* kCommonSource =
    R"(vec4 someFunction( vec4 a, float b )
{
    return a + b;
})";

constexpr const char* kBufferSource =
    R"(void mainImage( out vec4 fragColor, in vec2 fragCoord )
{
    fragColor = vec4(0.0, 0.0, 1.0, 1.0);
})";

constexpr const char* kCubeSource =
    R"(void mainCubemap( out vec4 fragColor, in vec2 fragCoord, in vec3 rayOri, in vec3 rayDir )
{
    // Ray direction as color
    vec3 col = 0.5 + 0.5 * rayDir;

    // Output to cubemap
    fragColor = vec4(col, 1.0);
})";

constexpr const char* kImageSource =
    R"(void mainImage( out vec4 fragColor, in vec2 fragCoord )
{
    // Normalized pixel coordinates (from 0 to 1)
    vec2 uv = fragCoord / iResolution.xy;

    // Time varying pixel color
    vec3 col = 0.5 + 0.5 * cos(iTime + uv.xyx + vec3(0, 2, 4));

    // Output to screen
    fragColor = vec4(col, 1.0);
})";

constexpr const char* kDefaultSources[kStageCount] = {nullptr,       kCommonSource, kBufferSource,
                                                      kBufferSource, kBufferSource, kBufferSource,
                                                      kCubeSource,   kImageSource};

struct ChannelTypeRow {
    const char* name;
    uint32_t wrap;
    uint32_t filter;
    uint32_t vflip;
};

// By ChannelType. Mirrored repeat instead of the plain one is deliberate: edges of pictures and buffers then
// meet without a seam.
constexpr ChannelTypeRow kChannelTypes[] = {
    {"Unused", 0, 0, 0},
    {"Texture", gl::kMirroredRepeat, gl::kLinearMipmapLinear, 1},
    {"Buffer", gl::kMirroredRepeat, gl::kLinear, 0},
    {"Cube A", gl::kMirroredRepeat, gl::kLinear, 0},
    {"Cubemap", gl::kClampToEdge, gl::kLinearMipmapLinear, 0},
    {"Volume", gl::kMirroredRepeat, gl::kLinearMipmapLinear, 0},
    {"Keyboard", gl::kClampToEdge, gl::kLinear, 0},
    {"Webcam", gl::kClampToEdge, gl::kLinear, 0},
    {"Audio", gl::kClampToEdge, gl::kLinear, 0},
};

}  // namespace

QString StageName(uint32_t id) {
    return id < kStageCount ? QString::fromLatin1(kStageNames[id]) : QString();
}

QString DefaultSource(uint32_t id) {
    return id < kStageCount ? QString::fromLatin1(kDefaultSources[id]) : QString();
}

QString ChannelTypeName(uint32_t kind) {
    return kind < std::size(kChannelTypes) ? QString::fromLatin1(kChannelTypes[kind].name) : QString();
}

bool SameInFile(const ChannelInput& a, const ChannelInput& b) {
    if (a.kind != b.kind) return false;
    if (a.kind == kChannelUnused) return true;
    // Both 0 and -1 say that there is no source.
    return a.wrap == b.wrap && a.filter == b.filter && a.vflip == b.vflip && a.srgb == b.srgb &&
           a.internalFormat == b.internalFormat && a.fileName == b.fileName &&
           std::max(a.sourceStage, 0) == std::max(b.sourceStage, 0);
}

bool DefaultSampler(ChannelInput& channel) {
    if (channel.kind == kChannelUnused || channel.kind >= std::size(kChannelTypes)) return false;
    const ChannelTypeRow& row = kChannelTypes[channel.kind];
    channel.wrap = row.wrap;
    channel.filter = row.filter;
    channel.vflip = row.vflip;
    channel.samplerCountdown = 2;
    channel.srgb = 0;
    return true;
}

QString UnusableMedium(uint32_t stageId, uint32_t index, const ChannelInput& channel) {
    QString reason = channel.mediaProblem;
    if (reason.isEmpty())
        reason = channel.fileName.isEmpty()
                     ? QStringLiteral("it names no file")
                     : QStringLiteral("the graphics driver refuses %1").arg(InQuotes(channel.fileName));
    return QStringLiteral("%1: the %2 of channel %3 can't be used: %4.")
        .arg(StageName(stageId), ChannelTypeName(channel.kind).toLower(), QString::number(index), reason);
}

}  // namespace pixelgrove
