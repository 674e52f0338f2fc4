#include "render/StageTargets.h"

#include <GL/glew.h>

#include "render/GlSetup.h"

namespace pixelgrove {

namespace {

constexpr qint64 kSmallPicture = 1 << 19;  // pixels

void AllocateCube() {
    for (int face = 0; face < 6; ++face) {
        glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face, 0, GL_RGBA16F, kCubeSide, kCubeSide, 0, GL_RGBA,
                     GL_FLOAT, nullptr);
    }
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    for (const GLenum side : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R}) {
        glTexParameteri(GL_TEXTURE_CUBE_MAP, side, GL_CLAMP_TO_EDGE);
    }
}

void AttachCube(GLuint texture) {
    for (int face = 0; face < 6; ++face) {
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_CUBE_MAP_POSITIVE_X + face,
                               texture, 0);
    }
}

void AllocateFlat(const RenderContext& context, GLuint texture, int width, int height) {
    if (context.sampleExponent != 0) {
        glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, texture);
        glTexImage2DMultisample(GL_TEXTURE_2D_MULTISAMPLE, 1 << context.sampleExponent,
                                context.frameBufferFormat, width, height, GL_TRUE);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D_MULTISAMPLE, texture, 0);
        return;
    }
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GLint(context.frameBufferFormat), width, height, 0, GL_RGBA, GL_FLOAT,
                 nullptr);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

GLuint MakeByteTexture(int width, int height) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    return texture;
}

GLuint MakeFrameBuffer(GLuint texture) {
    GLuint frameBuffer = 0;
    glGenFramebuffers(1, &frameBuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, frameBuffer);
    glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    return frameBuffer;
}

// No frame buffer is bound afterwards.
void CopyPicture(GLuint from, GLuint to, int width, int height) {
    glBindFramebuffer(GL_READ_FRAMEBUFFER, from);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, to);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

// One of that size: the last one, or another in its place.
const ReadBackTarget& ReadBackTargetOf(RenderContext& context, int width, int height) {
    ReadBackTarget& kept = context.readBack;
    if (kept.size == SurfaceSize{width, height}) return kept;
    DropReadBackTarget(context);
    kept.texture = MakeByteTexture(width, height);
    kept.frameBuffer = MakeFrameBuffer(kept.texture);
    kept.size = {width, height};
    return kept;
}

}  // namespace

ResolvedTarget::ResolvedTarget(uint32_t sourceFrameBuffer, int width, int height)
    : texture_(MakeByteTexture(width, height)), frameBuffer_(MakeFrameBuffer(texture_)) {
    CopyPicture(sourceFrameBuffer, frameBuffer_, width, height);
}

ResolvedTarget::~ResolvedTarget() {
    glDeleteFramebuffers(1, &frameBuffer_);
    glDeleteTextures(1, &texture_);
}

void DropReadBackTarget(RenderContext& context) {
    ReadBackTarget& kept = context.readBack;
    if (kept.texture == 0) return;
    glDeleteFramebuffers(1, &kept.frameBuffer);
    glDeleteTextures(1, &kept.texture);
    kept = {};
}

void DeleteStageTargets(ShaderStage& stage) {
    glDeleteFramebuffers(2, stage.frameBuffers.data());
    glDeleteTextures(2, stage.textures.data());
    stage.frameBuffers = {};
    stage.textures = {};
    stage.writeIndex = 0;
}

bool CreateStageTargets(RenderContext& context, ShaderStage& stage, int width, int height) {
    DeleteStageTargets(stage);
    context.targetFormat = context.frameBufferFormat;
    GLint largestSide = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largestSide);
    bool fits = stage.kind == kStageCubeA || (width <= largestSide && height <= largestSide);
    ShowGLError();  // what is reported below is then of these targets
    for (int i = 0; i < 2; ++i) {
        glGenFramebuffers(1, &stage.frameBuffers[i]);
        glBindFramebuffer(GL_FRAMEBUFFER, stage.frameBuffers[i]);
        glGenTextures(1, &stage.textures[i]);
        if (stage.kind == kStageCubeA) {
            glBindTexture(GL_TEXTURE_CUBE_MAP, stage.textures[i]);
            AllocateCube();
            AttachCube(stage.textures[i]);
        } else {
            AllocateFlat(context, stage.textures[i], width, height);
        }
        if (ShowGLError() == GL_OUT_OF_MEMORY) fits = false;
    }
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return fits;
}

bool ReadBackStage(RenderContext& context, uint32_t stageId, Bitmap& bitmap, int face) {
    if (!IsRenderedStage(stageId) || face < 0 || face > 5) return false;
    const ShaderStage& stage = context.project.stages[stageId];
    const uint32_t latest = (stage.writeIndex + 1) % 2;
    const GLuint texture = stage.textures[latest];
    if (stage.kind != stageId || texture == 0 || bitmap.bitsPerPixel != 32 || !bitmap.IsComplete())
        return false;

    const bool cube = stageId == kStageCubeA;
    const bool multisampled = !cube && context.sampleExponent != 0;
    const GLenum bindTarget = cube           ? GL_TEXTURE_CUBE_MAP
                              : multisampled ? GL_TEXTURE_2D_MULTISAMPLE
                                             : GL_TEXTURE_2D;
    const GLenum imageTarget = cube ? GLenum(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face) : bindTarget;
    GLint width = 0;
    GLint height = 0;
    glBindTexture(bindTarget, texture);
    glGetTexLevelParameteriv(imageTarget, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(imageTarget, 0, GL_TEXTURE_HEIGHT, &height);
    if (width != bitmap.width || height != bitmap.height) return false;

    // GL's rows run bottom-up, as a frame bitmap's do. In a large picture floats become bytes where it is:
    // the same bytes in half the time. For a small one the driver's work to set that up would count for more;
    // a face of the cube is in no frame buffer.
    const bool small = qint64(width) * height < kSmallPicture;
    if (cube || (small && !multisampled)) {
        glGetTexImage(imageTarget, 0, GL_BGRA, GL_UNSIGNED_BYTE, bitmap.bits.data());
    } else {
        const ReadBackTarget& bytes = ReadBackTargetOf(context, width, height);
        CopyPicture(stage.frameBuffers[latest], bytes.frameBuffer, width, height);
        glBindTexture(GL_TEXTURE_2D, bytes.texture);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, bitmap.bits.data());
    }
    ShowGLError();
    return true;
}

}  // namespace pixelgrove
