#include "render/Presentation.h"

#include <GL/glew.h>

#include <optional>

#include "commands/Commands.h"
#include "platform/Clock.h"
#include "render/FrameRecorder.h"
#include "render/FrameRenderer.h"
#include "render/GlSetup.h"
#include "render/RenderContext.h"
#include "render/StageTargets.h"

namespace pixelgrove {

namespace {

bool ShowReadBack(RenderRun& run, int width, int height) {
    // Another one each time: the main thread may still be painting the last.
    std::shared_ptr<Bitmap> frame = run.frames.Take(width, height);
    if (!frame || !ReadBackStage(*run.context, kStageImage, *frame)) return false;
    run.context->surface->ShowBitmap(frame);
    run.frame = std::move(frame);
    return true;
}

void ShowChannelPreviews(RenderRun& run) {
    const uint32_t shown = run.previewStage;
    if (!run.showPreview || shown >= kStageCount) return;
    RenderContext& context = *run.context;
    for (int i = 0; i < kChannelCount; ++i) {
        if (run.stopRequested) return;
        const ChannelInput& channel = context.project.stages[shown].channels[size_t(i)];
        if (channel.kind != kChannelBuffer || channel.sourceStage < 0 || channel.sourceStage >= kStageCount) {
            continue;
        }
        const std::shared_ptr<Bitmap> picture =
            CreateFrameBitmap(context.renderSize.width, context.renderSize.height);
        if (picture && ReadBackStage(context, uint32_t(channel.sourceStage), *picture)) {
            run.WithGate([&](Host&) { run.showPreview({i, picture, shown}); });
        }
    }
}

}  // namespace

float MsSinceFirstFrame() {
    static const uint64_t firstMs = TickCountMs();
    return float(TickCountMs() - firstMs);
}

void TakeTimeRequest(RenderRun& run) {
    const std::optional<TimeRequest::Place> place = run.controls->timeRequest.Take();
    if (!place) return;
    run.context->playTime = place->time;
    if (place->framesAnew) run.context->frameCounter = 0;
    run.controls->playTime = place->time;
}

void GivePicture(RenderRun& run) {
    if (run.pictureRequested.exchange(0) == 0) return;
    const SurfaceSize size = run.context->renderSize;
    std::shared_ptr<Bitmap> picture = CreateFrameBitmap(size.width, size.height);
    if (!picture || !ReadBackStage(*run.context, kStageImage, *picture)) return;
    run.picture.Exchange(std::move(picture));
    run.WithGate([](Host& host) { host.PostCommand(kCmdPictureTaken, 0); });
}

void PresentByBlit(RenderContext& context) {
    const ShaderStage& image = context.project.stages[kStageImage];
    const SurfaceSize client = context.surface->ClientSize();
    if (!context.glContext->HasDrawable() || image.kind != kStageImage || client.width < 1 ||
        client.height < 1) {
        return;
    }
    // writeIndex has flipped already, so this is the frame before the one just drawn.
    GLuint texture = image.textures[image.writeIndex];
    GLenum target = context.sampleExponent != 0 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D;
    std::optional<ResolvedTarget> resolved;
    if (context.sampleExponent != 0 && client != context.renderSize) {
        // A blit can't resolve and stretch at once.
        texture = resolved
                      .emplace(image.frameBuffers[image.writeIndex], context.renderSize.width,
                               context.renderSize.height)
                      .Texture();
        target = GL_TEXTURE_2D;
    }
    GLuint source = 0;
    glGenFramebuffers(1, &source);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, source);
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, target, texture, 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    glViewport(0, 0, client.width, client.height);
    glBlitFramebuffer(0, 0, context.renderSize.width, context.renderSize.height, 0, 0, client.width,
                      client.height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    glDeleteFramebuffers(1, &source);
    ShowGLError();
    context.glContext->SwapBuffers();
}

bool RenderAndPresent(RenderRun& run, int width, int height) {
    RenderContext& context = *run.context;
    RunControls& controls = *run.controls;
    if (controls.restartRequested.exchange(0) != 0)
        run.WithGate([](Host& host) { host.PostCommand(kCmdRestart, 0); });
    TakeTimeRequest(run);
    const float elapsedMs = MsSinceFirstFrame();
    if (width + height < 3 || width < 1 || height < 1) return false;
    UpdateUniformValues(context.uniforms, elapsedMs);
    context.frameBufferFormat = controls.frameBufferFormat;
    TakeSamplerChanges(run.samplers, context);
    if (!RenderStages(&context, run.palette.get())) return false;
    controls.playTime = context.playTime;
    GivePicture(run);
    if (run.stopRequested) return true;
    if (controls.useGdiDisplay || run.recording) return ShowReadBack(run, width, height);
    if (context.glContext->HasDrawable()) {  // else whoever drives the engine reads back
        run.frames.Clear();
        DropReadBackTarget(context);
    }
    if (controls.showChannelBuffers) ShowChannelPreviews(run);
    if (run.stopRequested) return true;
    PresentByBlit(context);
    return true;
}

bool RenderFrameTick(RenderRun& run) {
    RunControls& controls = *run.controls;
    RenderContext& context = *run.context;
    run.frame.reset();
    FollowRecording(run);
    const bool captures = controls.captureRequested.exchange(0) != 0;
    if (!captures && run.recording == 0) {
        const SurfaceSize size = context.surface->ClientSize();
        return RenderAndPresent(run, size.width, size.height);
    }
    if (run.recording == 0) ForceSize(context, RecordSize(controls));
    const SurfaceSize size = context.forcedSize;
    const bool drawn = RenderAndPresent(run, size.width, size.height);
    if (!drawn) {
        run.WithGate([](Host& host) { host.Beep(); });
        if (run.recording != 0) NoteUndrawnFrame(run);
    } else if (controls.captureRequested != 0) {
        // Asked for once more while the frame was drawn: a single request draws a frame and leaves no file.
        SaveCapture(run);
    }
    if (run.recording == 0)
        ForceSize(context, std::nullopt);
    else if (drawn && run.frame)
        RecordFrame(run);
    return drawn;
}

}  // namespace pixelgrove
