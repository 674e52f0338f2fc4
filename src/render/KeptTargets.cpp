#include "render/KeptTargets.h"

#include <GL/glew.h>

#include <utility>

#include "render/ChannelTextures.h"
#include "render/GlSetup.h"
#include "render/StageTargets.h"

namespace pixelgrove {

namespace {

bool HasPicture(const KeptTargets::Pair& pair) {
    return pair.textures[0] != 0;
}

KeptTargets::Pair TakePair(ShaderStage& stage) {
    return {std::exchange(stage.frameBuffers, {}), std::exchange(stage.textures, {}),
            std::exchange(stage.writeIndex, 0)};
}

void PutPair(ShaderStage& stage, KeptTargets::Pair& pair) {
    stage.frameBuffers = std::exchange(pair.frameBuffers, {});
    stage.textures = std::exchange(pair.textures, {});
    stage.writeIndex = pair.writeIndex;
}

void DeletePair(KeptTargets::Pair& pair) {
    ShaderStage stage;
    PutPair(stage, pair);
    DeleteStageTargets(stage);
}

void ClearBound() {
    const GLfloat clear[4] = {};
    glClearBufferfv(GL_COLOR, 0, clear);
}

void ClearTargets(const ShaderStage& stage) {
    for (size_t i = 0; i < stage.textures.size(); ++i) {
        glBindFramebuffer(GL_FRAMEBUFFER, stage.frameBuffers[i]);
        for (int face = 0; stage.kind == kStageCubeA && face < 6; ++face) {
            glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0,
                                   GLenum(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face), stage.textures[i], 0);
            ClearBound();
        }
        if (stage.kind != kStageCubeA) ClearBound();
    }
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

// The next project finds the context as one that is new.
void Unbind() {
    glUseProgram(0);
    glBindVertexArray(0);
    for (GLenum unit = 0; unit < kChannelCount; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        for (const GLenum target : {GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP})
            glBindTexture(target, 0);
    }
    glActiveTexture(GL_TEXTURE0);
}

void DeleteAllButTargets(RenderContext& context) {
    Unbind();
    for (ShaderStage& stage : context.project.stages) {
        glDeleteProgram(std::exchange(stage.program, 0));
        for (ChannelInput& channel : stage.channels)
            ReleaseChannel(channel);
    }
    for (uint32_t* texture :
         {&context.paletteTexture, &context.keyboardTexture, &context.audioTexture, &context.webcamTexture}) {
        glDeleteTextures(1, texture);
        *texture = 0;
    }
    DropReadBackTarget(context);
    glDeleteVertexArrays(1, &context.vertexArray);
    glDeleteBuffers(1, &context.vertexBuffer);
}

}  // namespace

std::optional<KeptTargets> LeavePictures(RenderContext& past) {
    DeleteAllButTargets(past);
    // Of a project that didn't compile, or drew nothing, those that it would have gone on with.
    std::optional<KeptTargets> kept = std::exchange(past.kept, std::nullopt);
    if (!kept && past.frameCounter >= 0) {
        kept.emplace();
        for (uint32_t id = 0; id < kStageCount; ++id)
            kept->stages[id] = TakePair(past.project.stages[id]);
        kept->size = past.renderSize;
        kept->sampleExponent = past.sampleExponent;
        kept->format = past.targetFormat;
    }
    for (ShaderStage& stage : past.project.stages)
        DeleteStageTargets(stage);
    ShowGLError();
    return kept;
}

bool HasKeptPicture(const RenderContext& context, uint32_t stage) {
    if (!context.kept || !HasPicture(context.kept->stages[stage])) return false;
    const KeptTargets& kept = *context.kept;
    return stage == kStageCubeA ||
           (kept.size == context.renderSize && kept.sampleExponent == context.sampleExponent &&
            kept.format == context.frameBufferFormat);
}

bool TakeKeptPictures(RenderContext& context) {
    if (!context.kept) return false;
    bool isAllKept = true;
    for (uint32_t id = 0; id < kStageCount; ++id) {
        ShaderStage& stage = context.project.stages[id];
        KeptTargets::Pair& pair = context.kept->stages[id];
        const bool isDrawn = IsRenderedStage(stage.kind);
        if (isDrawn && HasKeptPicture(context, id)) {
            PutPair(stage, pair);
        } else if (isDrawn) {
            if (HasPicture(pair)) isAllKept = false;
            ClearTargets(stage);
        }
        DeletePair(pair);
    }
    context.targetFormat = context.frameBufferFormat;
    context.kept.reset();
    ShowGLError();
    return isAllKept;
}

}  // namespace pixelgrove
