// Engine: the real engine on EGL, driven frame by frame by a test. One at a time, on one thread.
#pragma once

#include <GL/glew.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "controls/Annotations.h"
#include "controls/LiveValues.h"
#include "core/AppState.h"
#include "project/ProjectModel.h"
#include "render/EglSurface.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"
#include "render/StageTargets.h"

namespace pixelgrove::test {

// An EGL surface whose size a test can change, and that keeps what the read-back path shows and how often a
// paused run asked whether something is to be shown anew.
class ResizableSurface : public OutputSurface {
  public:
    explicit ResizableSurface(SurfaceSize size) : size_(size), egl_(CreateEglSurface(size)) {}
    SurfaceSize ClientSize() const override {
        std::lock_guard lock(lock_);
        return size_;
    }
    std::unique_ptr<GlContext> CreateContext() override { return egl_ ? egl_->CreateContext() : nullptr; }
    void ShowBitmap(BitmapRef bitmap) override {
        std::lock_guard lock(lock_);
        shown_ = std::move(bitmap);
    }
    bool TakeRepaintRequest() override {
        ++repaintsAsked_;
        return false;
    }
    int RepaintsAsked() const { return repaintsAsked_; }
    void Resize(SurfaceSize size) {
        std::lock_guard lock(lock_);
        size_ = size;
    }
    BitmapRef Shown() const {
        std::lock_guard lock(lock_);
        return shown_;
    }

  private:
    mutable std::mutex lock_;
    SurfaceSize size_;
    BitmapRef shown_;
    std::atomic<int> repaintsAsked_{0};
    std::shared_ptr<OutputSurface> egl_;
};

using Pixel = std::array<float, 4>;

inline void SetKind(ChannelInput& channel, uint32_t kind) {
    channel.kind = kind;
    DefaultSampler(channel);
}

class Engine {
  public:
    Engine() {
        AllocateGlobals();
        InitialiseSpeed(*Controls());
    }
    ~Engine() {
        run_.reset();
        FreeGlobals();
    }

    void SetText(uint32_t stage, const char* text) {
        SetDocumentText(App()->project.documents[stage], QString::fromLatin1(text));
        App()->project.documents[stage].hasText = true;
    }
    ChannelInput& Channel(uint32_t stage, int index) { return App()->project.channels[stage][size_t(index)]; }
    // A channel that reads another stage.
    void Connect(uint32_t stage, int index, uint32_t source) {
        SetKind(Channel(stage, index), source == kStageCubeA ? kChannelCubeA : kChannelBuffer);
        Channel(stage, index).sourceStage = int32_t(source);
    }

    CompileOutcome Start(int width, int height, float startTime = 0.1f, uint32_t sampleExponent = 0) {
        surface_ = std::make_shared<ResizableSurface>(SurfaceSize{width, height});
        RunRequest request = SnapshotProject(*App(), *Controls());
        request.surface = surface_;
        request.startTime = startTime;
        PublishControlValues(*Controls());
        run_ = std::make_shared<RenderRun>(*App(), std::move(request));
        if (!PrepareRenderContext(*run_)) return {CompileResult::Failed, 0, QStringLiteral("no GL context")};
        run_->context->sampleExponent = sampleExponent;
        return CompileProject(*run_->context);
    }
    // Starts with this text as the Image stage and draws so many frames.
    bool Play(const std::string& image, int width, int height, int frames = 1) {
        SetText(kStageImage, image.c_str());
        return Start(width, height).result == CompileResult::Good && Draw(frames);
    }
    bool Draw(int frames) {
        for (int i = 0; i < frames; ++i) {
            if (!RenderFrameTick(*run_)) return false;
        }
        return true;
    }
    // The latest picture of a stage, in the target's own precision; row 0 is the bottom one.
    std::vector<Pixel> Read(uint32_t stage, int face = 0) {
        const ShaderStage& record = Context().project.stages[stage];
        const GLuint texture = record.textures[(record.writeIndex + 1) % 2];
        const bool cube = stage == kStageCubeA;
        const GLenum target = cube ? GLenum(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face) : GL_TEXTURE_2D;
        GLint width = 0;
        GLint height = 0;
        glBindTexture(cube ? GL_TEXTURE_CUBE_MAP : GL_TEXTURE_2D, texture);
        glGetTexLevelParameteriv(target, 0, GL_TEXTURE_WIDTH, &width);
        glGetTexLevelParameteriv(target, 0, GL_TEXTURE_HEIGHT, &height);
        std::vector<Pixel> pixels(size_t(width) * size_t(height));
        glGetTexImage(target, 0, GL_RGBA, GL_FLOAT, pixels.data());
        return pixels;
    }
    Pixel ReadFirst(uint32_t stage = kStageImage) { return Read(stage).at(0); }
    RenderContext& Context() { return *run_->context; }
    RenderRun& Run() { return *run_; }
    ResizableSurface& Surface() { return *surface_; }

  private:
    std::shared_ptr<ResizableSurface> surface_;
    std::shared_ptr<RenderRun> run_;
};

inline uint32_t Bits(float value) {
    uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

}  // namespace pixelgrove::test
