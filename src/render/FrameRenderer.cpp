#include "render/FrameRenderer.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>

#include "core/Stages.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "render/GlSetup.h"
#include "render/InputState.h"
#include "render/LiveTextures.h"
#include "render/StageTargets.h"

namespace pixelgrove {

namespace {

// Four corners of each face and the ray's origin. +Y holding y = -1 and -Y y = 1 is meant so: shaders expect
// these rays.
constexpr float kCubeCorners[6][5][3] = {
    {{1, -1, -1}, {1, -1, 1}, {1, 1, 1}, {1, 1, -1}, {0, 0, 0}},
    {{-1, -1, 1}, {-1, -1, -1}, {-1, 1, -1}, {-1, 1, 1}, {0, 0, 0}},
    {{-1, -1, 1}, {1, -1, 1}, {1, -1, -1}, {-1, -1, -1}, {0, 0, 0}},
    {{-1, 1, -1}, {1, 1, -1}, {1, 1, 1}, {-1, 1, 1}, {0, 0, 0}},
    {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1}, {0, 0, 0}},
    {{1, -1, 1}, {-1, -1, 1}, {-1, 1, 1}, {1, 1, 1}, {0, 0, 0}},
};
constexpr float kCubeResolution[3] = {kCubeSide, kCubeSide, 1};

void FollowSize(RenderContext& context) {
    context.clientSize = context.surface->ClientSize();
    const SurfaceSize wanted = WantedSize(context);
    if (wanted == context.renderSize) return;
    context.resolution = {float(wanted.width), float(wanted.height), 1.0f};
    context.frameCounter = -1;
    context.renderSize = wanted;
    for (ShaderStage& stage : context.project.stages) {
        if (IsRenderedStage(stage.kind) && stage.kind != kStageCubeA) {
            CreateStageTargets(context, stage, wanted.width, wanted.height);
        }
    }
}

std::array<float, 4> DateOf(const RenderContext& context) {
    if (context.fixedDate) return *context.fixedDate;
    const time_t now = std::time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    return {float(local.tm_year + 1900), float(local.tm_mon + 1), float(local.tm_mday),
            float((local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec)};
}

// An average over the run, compile time included.
float FrameRate(const RenderContext& context) {
    if (context.fixedFrameRate) return *context.fixedFrameRate;
    const uint64_t elapsedMs = TickCountMs() - context.runStartMs;
    if (elapsedMs == 0) return 60.0f;
    return float(double(context.frameCounter) * 1000.0 / double(elapsedMs));
}

int ShownFrame(const RenderContext& context) {
    return std::max(context.frameCounter, 0);
}

void SendStandardUniforms(const RenderContext& context, const ShaderStage& stage) {
    const GLuint program = stage.program;
    const auto at = [program](const char* name) { return glGetUniformLocation(program, name); };
    glUniform2fv(at("resolution"), 1, context.resolution.data());
    glUniform1f(at("time"), context.playTime);
    glUniform2fv(at("mouse"), 1, context.mouse.data());
    glUniform3fv(at("iResolution"), 1,
                 stage.kind == kStageCubeA ? kCubeResolution : context.resolution.data());
    glUniform1f(at("iTime"), context.playTime);
    glUniform1f(at("iTimeDelta"), context.uniforms.values[0].floatValue);
    glUniform1f(at("iFrameRate"), context.frameRate);
    glUniform1i(at("iFrame"), ShownFrame(context));
    glUniform4fv(at("iDate"), 1, context.date.data());
    glUniform4fv(at("iMouse"), 1, context.mouse.data());
    glUniform1fv(at("iChannelTime"), kChannelCount, stage.channelTime.data());
    glUniform3fv(at("iChannelResolution"), kChannelCount, stage.channelResolution[0].data());
}

void SendValue(const UniformValue& value, GLuint program) {
    const GLint location = glGetUniformLocation(program, ToCodePage(value.name).constData());
    if (location < 0) return;
    switch (value.type) {
        case kControlFloat:
            glUniform1f(location, value.floatValue);
            break;
        case kControlInt:
            glUniform1i(location, value.intValue);
            break;
        case kControlUint:
            glUniform1ui(location, value.uintValue);
            break;
        case kControlBool:
            glUniform1i(location, value.boolValue);
            break;
        default:
            break;
    }
}

void SendUserUniforms(const RenderContext& context, GLuint program) {
    for (int i = 1; i < context.uniforms.count; ++i)
        SendValue(context.uniforms.values[size_t(i)], program);
    for (const UniformValue& value : context.fixedValues)
        SendValue(value, program);
}

struct BoundTexture {
    GLuint name = 0;
    GLenum target = GL_TEXTURE_2D;
};

BoundTexture StageTexture(const RenderContext& context, int32_t sourceStage) {
    if (sourceStage < 0 || sourceStage >= kStageCount) return {};
    const ShaderStage& source = context.project.stages[size_t(sourceStage)];
    if (!IsRenderedStage(source.kind)) return {};
    const GLuint name = source.textures[(source.writeIndex + 1) % 2];
    if (source.kind == kStageCubeA) return {name, GL_TEXTURE_CUBE_MAP};
    const bool multisampled = context.sampleExponent != 0;
    return {name, GLenum(multisampled ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D)};
}

BoundTexture ChannelTexture(const RenderContext& context, const ChannelInput& channel) {
    switch (channel.kind) {
        case kChannelTexture:
            return {channel.texture, GL_TEXTURE_2D};
        case kChannelCubemap:
            return {channel.texture, GL_TEXTURE_CUBE_MAP};
        case kChannelVolume:
            return {channel.texture, GL_TEXTURE_3D};
        case kChannelKeyboard:
            return {context.keyboardTexture, GL_TEXTURE_2D};
        case kChannelWebcam:
            return {context.webcamTexture, GL_TEXTURE_2D};
        case kChannelAudio:
            return {context.audioTexture, GL_TEXTURE_2D};
        case kChannelBuffer:
        case kChannelCubeA:
            return StageTexture(context, channel.sourceStage);
        default:
            return {};
    }
}

// The target that the channel's sampler reads, whatever stands behind the channel.
GLenum SamplerTarget(const ChannelInput& channel) {
    if (channel.kind == kChannelCubeA || channel.kind == kChannelCubemap) return GL_TEXTURE_CUBE_MAP;
    return channel.kind == kChannelVolume ? GL_TEXTURE_3D : GL_TEXTURE_2D;
}

void ApplySampler(ChannelInput& channel) {
    const GLenum target = SamplerTarget(channel);
    glTexParameteri(target, GL_TEXTURE_WRAP_S, GLint(channel.wrap));
    glTexParameteri(target, GL_TEXTURE_WRAP_T, GLint(channel.wrap));
    if (target != GL_TEXTURE_2D) glTexParameteri(target, GL_TEXTURE_WRAP_R, GLint(channel.wrap));
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GLint(channel.filter));
    if (channel.filter == GL_LINEAR_MIPMAP_LINEAR) {
        glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glGenerateMipmap(target);
    } else {
        glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GLint(channel.filter));
    }
    if (channel.samplerCountdown != 0) --channel.samplerCountdown;
}

void BindChannels(const RenderContext& context, ShaderStage& stage) {
    char name[] = "iChannel0";
    for (int i = 0; i < kChannelCount; ++i) {
        ChannelInput& channel = stage.channels[size_t(i)];
        if (channel.kind == kChannelUnused) continue;
        // Its own unit in every case: two sampler types on one unit make the draw fail.
        name[8] = char('0' + i);
        glUniform1i(glGetUniformLocation(stage.program, name), i);
        glActiveTexture(GLenum(GL_TEXTURE0 + i));
        const BoundTexture texture = ChannelTexture(context, channel);
        if (texture.name == 0) {
            glBindTexture(SamplerTarget(channel), 0);  // reads black
            continue;
        }
        glBindTexture(texture.target, texture.name);
        // Sampler state belongs to the texture, and a feedback channel alternates between two: hence a
        // countdown of frames instead of a flag.
        if (ShownFrame(context) == 0 || channel.samplerCountdown != 0) ApplySampler(channel);
    }
}

void DrawQuad(const RenderContext& context) {
    glBindVertexArray(context.vertexArray);
    glDrawArrays(GL_TRIANGLES, 0, 6);
    glBindVertexArray(0);
    // A frame counts as done when it is done: each stage waits for the GPU.
    glFinish();
}

void DrawFlat(const RenderContext& context, const ShaderStage& stage) {
    glBindFramebuffer(GL_FRAMEBUFFER, stage.frameBuffers[stage.writeIndex]);
    glViewport(0, 0, GLsizei(std::lround(context.resolution[0])),
               GLsizei(std::lround(context.resolution[1])));
    DrawQuad(context);
}

void DrawCube(const RenderContext& context, const ShaderStage& stage) {
    const GLint corners = glGetUniformLocation(stage.program, "cmCornerVertices");
    const GLint resolution = glGetUniformLocation(stage.program, "iResolution");
    const GLint frame = glGetUniformLocation(stage.program, "iFrame");
    for (int face = 0; face < 6; ++face) {
        glBindFramebuffer(GL_FRAMEBUFFER, stage.frameBuffers[stage.writeIndex]);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0,
                               GLenum(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face),
                               stage.textures[stage.writeIndex], 0);
        glViewport(0, 0, kCubeSide, kCubeSide);
        glUniform3fv(corners, 5, kCubeCorners[face][0]);
        glUniform3fv(resolution, 1, kCubeResolution);
        glUniform1i(frame, ShownFrame(context));
        DrawQuad(context);
    }
}

void RunPass(const RenderContext& context, ShaderStage& stage) {
    glUseProgram(stage.program);
    SendStandardUniforms(context, stage);
    SendUserUniforms(context, stage.program);
    BindChannels(context, stage);
    if (stage.kind == kStageCubeA) {
        DrawCube(context, stage);
    } else {
        DrawFlat(context, stage);
    }
    stage.writeIndex = (stage.writeIndex + 1) % 2;
    ShowGLError();
}

}  // namespace

SurfaceSize WantedSize(const RenderContext& context) {
    return context.forcedSizeOn ? context.forcedSize : context.clientSize;
}

std::array<float, 4> TakeMouse() {
    MouseState& mouse = Mouse();
    const auto clickX = float(mouse.clickX.load());
    const auto clickY = float(mouse.clickY.load());
    std::array<float, 4> result{float(mouse.x.load()), float(mouse.y.load()), 0, 0};
    result[3] = -clickY;
    float negativeX = -clickX;
    if (mouse.justPressed.exchange(0) != 0) result[3] = clickY;
    if (mouse.isDown == 0) {
        negativeX = std::abs(clickX);
        result[3] = -std::abs(clickY);
    }
    result[2] = -negativeX;
    return result;
}

bool RenderStages(RenderContext* context, const SharedPalette* palette) {
    if (!context) return false;
    if (context->resizable) FollowSize(*context);
    context->playTime += context->uniforms.values[0].floatValue;
    context->mouse = TakeMouse();
    context->date = DateOf(*context);
    context->frameRate = FrameRate(*context);
    FeedLiveTextures(*context, palette);
    for (ShaderStage& stage : context->project.stages)
        stage.channelTime.fill(context->playTime);
    for (ShaderStage& stage : context->project.stages) {
        if (IsRenderedStage(stage.kind)) RunPass(*context, stage);
    }
    ++context->frameCounter;
    return true;
}

void SkipStages(RenderContext& context) {
    context.playTime += context.uniforms.values[0].floatValue;
    for (ShaderStage& stage : context.project.stages)
        if (IsRenderedStage(stage.kind)) stage.writeIndex = (stage.writeIndex + 1) % 2;
    ++context.frameCounter;
}

}  // namespace pixelgrove
