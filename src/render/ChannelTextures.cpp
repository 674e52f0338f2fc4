#include "render/ChannelTextures.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "media/BitmapRows.h"
#include "media/LiveFeeds.h"
#include "media/VolumeFile.h"
#include "render/GlSetup.h"
#include "render/InputState.h"
#include "render/LiveTextures.h"

namespace pixelgrove {

namespace {

struct PixelForm {
    GLint internalFormat;
    GLenum format;
};

std::optional<PixelForm> PixelFormOf(int bitsPerPixel) {
    switch (bitsPerPixel) {
        case 32:
            return PixelForm{GL_RGBA8, GL_BGRA};
        case 24:
            return PixelForm{GL_RGB8, GL_BGR};
        case 8:
            return PixelForm{GL_R8, GL_RED};
        default:
            return std::nullopt;
    }
}

// Uploads one picture as level 0 of a target of the bound texture.
bool UploadBitmap(GLenum target, const BitmapRef& bitmap, bool vflip) {
    if (!bitmap || !bitmap->IsComplete()) return false;
    const std::optional<PixelForm> form = PixelFormOf(bitmap->bitsPerPixel);
    if (!form) return false;
    std::optional<std::vector<uint8_t>> pixels = RepackBitmapRows(*bitmap, vflip);
    if (!pixels) return false;
    // GL reads rows at its default alignment of 4, which is wider than a tight row may be; the end must
    // exist.
    pixels->resize(bitmap->StrideBytes() * size_t(bitmap->height));
    glTexImage2D(target, 0, form->internalFormat, bitmap->width, bitmap->height, 0, form->format,
                 GL_UNSIGNED_BYTE, pixels->data());
    return true;
}

bool UploadTexture(ChannelInput& channel) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    if (!UploadBitmap(GL_TEXTURE_2D, channel.faces[0], channel.vflip != 0)) {
        glDeleteTextures(1, &name);
        return false;
    }
    channel.texture = name;
    return true;
}

bool UploadCubemap(ChannelInput& channel) {
    constexpr int kStraight[] = {0, 1, 2, 3, 4, 5};
    constexpr int kFlipped[] = {0, 1, 3, 2, 4, 5};  // top and bottom change places
    const int* order = channel.vflip ? kFlipped : kStraight;
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_CUBE_MAP, name);
    for (int n = 0; n < 6; ++n) {
        if (!UploadBitmap(GL_TEXTURE_CUBE_MAP_POSITIVE_X + n, channel.faces[order[n]], channel.vflip != 0)) {
            glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
            glDeleteTextures(1, &name);
            return false;
        }
    }
    glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
    channel.texture = name;
    return name != 0;
}

// The rows with their starts at multiples of 4, as GL reads them by default.
std::vector<uint8_t> AlignedRows(const uint8_t* samples, size_t rowBytes, size_t rows) {
    const size_t stride = (rowBytes + 3) / 4 * 4;
    std::vector<uint8_t> aligned(stride * rows);
    for (size_t row = 0; row < rows; ++row)
        std::memcpy(aligned.data() + row * stride, samples + row * rowBytes, rowBytes);
    return aligned;
}

bool UploadVolume(ChannelInput& channel) {
    if (!channel.volumeData || !IsVolumeComplete(*channel.volumeData)) return false;
    const VolumeHeader header = *ReadVolumeHeader(*channel.volumeData);
    GLint largestSide = 0;
    glGetIntegerv(GL_MAX_3D_TEXTURE_SIZE, &largestSide);
    if (std::max({header.x, header.y, header.z}) > uint32_t(largestSide)) return false;
    const uint8_t* samples = channel.volumeData->data() + kVolumeHeaderBytes;
    const size_t rowBytes = size_t(header.x) * VolumeSampleBytes(header.sampleKind);
    std::vector<uint8_t> aligned;
    if (rowBytes % 4 != 0) {
        aligned = AlignedRows(samples, rowBytes, size_t(header.y) * header.z);
        samples = aligned.data();
    }
    GLint internalFormat = GL_R8;
    GLenum type = GL_UNSIGNED_BYTE;
    if (header.sampleKind == 2) {
        internalFormat = GL_R16;
        type = GL_UNSIGNED_SHORT;
    } else if (header.sampleKind == 4) {
        internalFormat = GL_RGBA;
    }
    ShowGLError();  // what is reported below is then this upload's own
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_3D, name);
    glTexImage3D(GL_TEXTURE_3D, 0, internalFormat, GLsizei(header.x), GLsizei(header.y), GLsizei(header.z), 0,
                 GL_RED, type, samples);
    if (ShowGLError() != GL_NO_ERROR) {
        glDeleteTextures(1, &name);
        return false;
    }
    channel.texture = name;
    return true;
}

}  // namespace

bool SetChannel(RenderContext& context, uint32_t stage, uint32_t channelIndex, const ChannelInput& source) {
    if (stage >= kStageCount || channelIndex >= kChannelCount) return false;
    ShaderStage& target = context.project.stages[stage];
    ChannelInput& channel = target.channels[channelIndex];
    if (channel.kind != kChannelUnused) ReleaseChannel(channel);
    channel.kind = source.kind;
    channel.channelIndex = channelIndex;
    if (!DefaultSampler(channel)) return false;
    channel.Sampler() = source.Sampler();
    channel.sourceStage = -1;

    std::array<float, 3>& resolution = target.channelResolution[channelIndex];
    switch (source.kind) {
        case kChannelTexture:
        case kChannelCubemap: {
            channel.fileName = source.fileName;
            channel.mediaProblem = source.mediaProblem;
            const BitmapRef& first = source.faces[0];
            if (!first || !first->IsComplete()) return false;
            if (source.kind == kChannelTexture) {
                channel.faces[0] = first;
            } else {
                channel.faces = source.faces;
            }
            resolution = {float(first->width), float(first->height), 1.0f};
            return true;
        }
        case kChannelBuffer: {
            if (source.sourceStage < 0 || source.sourceStage >= kStageCount) return false;
            channel.sourceStage = source.sourceStage;
            // The window's size at this moment: it doesn't follow later resizes.
            const SurfaceSize size = context.surface->ClientSize();
            resolution = {float(size.width), float(size.height), 1.0f};
            return true;
        }
        case kChannelCubeA:
            if (source.sourceStage < 0 || source.sourceStage >= kStageCount) return false;
            channel.sourceStage = source.sourceStage;
            resolution = {float(kCubeSide), float(kCubeSide), 1.0f};
            return true;
        case kChannelVolume: {
            channel.fileName = source.fileName;
            channel.mediaProblem = source.mediaProblem;
            if (!source.volumeData) return false;
            channel.volumeData = source.volumeData;
            const VolumeHeader header = ReadVolumeHeader(*source.volumeData).value_or(VolumeHeader{});
            resolution = {float(header.x), float(header.y), float(header.z)};
            return true;
        }
        case kChannelKeyboard:
            resolution = {kKeyCodes, kKeyRows, 1};
            return true;
        case kChannelWebcam:
            resolution = {kWebcamWidth, kWebcamHeight, 1};
            return true;
        case kChannelAudio:
            resolution = {kAudioColumns, kAudioRows, 1};
            return true;
        default:
            return false;
    }
}

bool UploadChannelTexture(RenderContext& context, uint32_t stage, uint32_t channelIndex) {
    if (stage >= kStageCount || channelIndex >= kChannelCount) return false;
    ChannelInput& channel = context.project.stages[stage].channels[channelIndex];
    channel.texture = 0;
    bool done = false;
    switch (channel.kind) {
        case kChannelTexture:
            done = UploadTexture(channel);
            break;
        case kChannelCubemap:
            done = UploadCubemap(channel);
            break;
        case kChannelVolume:
            done = UploadVolume(channel);
            break;
        default:
            return false;
    }
    if (done && channel.kind == kChannelTexture) {
        // Selects a unit numbered by the name. Passes select their own units, so nothing depends on it, and a
        // driver with fewer units refuses it without harm.
        glActiveTexture(GL_TEXTURE0 + channel.texture);
        glBindTexture(GL_TEXTURE_2D, channel.texture);
    }
    ShowGLError();
    return done;
}

void ReleaseChannel(ChannelInput& channel) {
    if (channel.kind == kChannelUnused) return;
    if (channel.texture != 0) glDeleteTextures(1, &channel.texture);
    channel = ChannelInput{};
}

}  // namespace pixelgrove
