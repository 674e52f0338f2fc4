// The eight stage slots of a project and the nine kinds of input channel: numbers, names, defaults.
//
// Pure data; any thread, but for stageTabs, which belongs to the main thread.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "media/Bitmap.h"

namespace pixelgrove {

// A stage's number is its index everywhere, its place in the order of rendering, and its kind.
enum StageId : uint32_t {
    kStageNone = 0,
    kStageCommon = 1,
    kStageBufferA = 2,
    kStageBufferB = 3,
    kStageBufferC = 4,
    kStageBufferD = 5,
    kStageCubeA = 6,
    kStageImage = 7,
};
constexpr int kStageCount = 8;
constexpr int kChannelCount = 4;
constexpr int kCubeSide = 1024;

// "+", "Common", "Buffer A".."Buffer D", "Cube A", "Image"; empty above 7.
QString StageName(uint32_t id);

// True for the stages that are drawn: 2 to 7.
constexpr bool IsRenderedStage(uint32_t id) {
    return id >= kStageBufferA && id <= kStageImage;
}

// The source text of a stage that was just added; null string for 0 and above 7.
QString DefaultSource(uint32_t id);

struct StageTabRow {
    int32_t buttonId;
    uint32_t exists;
    int32_t stageId;
};
// The main window's stage buttons, by StageId. Row 0 is the "+" button.
extern std::array<StageTabRow, kStageCount> stageTabs;

enum ChannelType : uint32_t {
    kChannelUnused = 0,
    kChannelTexture = 1,
    kChannelBuffer = 2,
    kChannelCubeA = 3,
    kChannelCubemap = 4,
    kChannelVolume = 5,
    kChannelKeyboard = 6,
    kChannelWebcam = 7,
    kChannelAudio = 8,
};

// "Unused", "Texture", "Buffer", "Cube A", "Cubemap", "Volume", "Keyboard", "Webcam", "Audio"; empty above 8.
QString ChannelTypeName(uint32_t kind);

// GL enumerants that channels carry; logic that knows no GL uses these.
namespace gl {
constexpr uint32_t kNearest = 0x2600;
constexpr uint32_t kLinear = 0x2601;
constexpr uint32_t kLinearMipmapLinear = 0x2703;
constexpr uint32_t kRepeat = 0x2901;
constexpr uint32_t kClampToEdge = 0x812F;
constexpr uint32_t kMirroredRepeat = 0x8370;
constexpr uint32_t kRgba32f = 0x8814;
}  // namespace gl

// A whole volume file in memory, shared and never written again.
using VolumeRef = std::shared_ptr<const std::vector<uint8_t>>;

constexpr int kFileNameCapacity = 260;  // code units, the terminating zero included
// A name that doesn't fit its field leaves it empty.
inline QString FittedFileName(const QString& name) {
    return name.size() < kFileNameCapacity ? name : QString();
}

// What of a channel may change while a shader plays.
struct SamplerSettings {
    uint32_t wrap = 0;
    uint32_t filter = 0;
    uint32_t vflip = 0;
    uint32_t samplerCountdown = 0;  // frames for which the renderer still re-applies wrap and filter
    uint32_t srgb = 0;              // carried from and to project files only
    uint32_t internalFormat = 0;    // 1 is "byte"; carried from and to project files only

    SamplerSettings& Sampler() { return *this; }
    const SamplerSettings& Sampler() const { return *this; }
};

struct ChannelInput : SamplerSettings {
    uint32_t kind = kChannelUnused;
    uint32_t texture = 0;  // GL name, only in a RenderContext
    // Texture uses the first only; Cubemap all six, in the order +X -X +Y -Y +Z -Z.
    std::array<BitmapRef, 6> faces;
    VolumeRef volumeData;
    int32_t sourceStage = -1;  // StageId for Buffer and Cube A
    uint32_t channelIndex = 0;
    QString fileName;  // path or cache name of the medium; empty for live kinds
    // What is wrong with the medium, as a clause for the user that names the file; empty when nothing is.
    QString mediaProblem;
};

// "Image: the texture of channel 1 can't be used: " and why, for a Texture, Cubemap or Volume channel that
// has no picture to show.
QString UnusableMedium(uint32_t stageId, uint32_t index, const ChannelInput& channel);

using StageChannels = std::array<std::array<ChannelInput, kChannelCount>, kStageCount>;

// Whether a project file holds the same of both channels.
bool SameInFile(const ChannelInput& a, const ChannelInput& b);

// Writes the kind's default wrap, filter and vflip into the channel, countdown 2, srgb 0.
// False, with nothing written, when channel.kind is Unused or above 8.
bool DefaultSampler(ChannelInput& channel);

}  // namespace pixelgrove
