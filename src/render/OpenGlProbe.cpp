#include "render/OpenGlProbe.h"

#include <utility>

#include "core/Stages.h"
#include "platform/CodePage.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"

namespace pixelgrove {

OpenGlProbe::OpenGlProbe(std::shared_ptr<OutputSurface> surface) : surface_(std::move(surface)) {
    if (surface_ && !thread_.Start(kRenderStackBytes, [this] { Run(); })) Run();
}

OpenGlProbe::~OpenGlProbe() {
    IsGood();
}

void OpenGlProbe::Run() {
    context_ = CreateRenderContext(surface_);
    if (!context_) return;
    ShaderStage& image = context_->project.stages[kStageImage];
    image.kind = kStageImage;
    image.source = ToCodePage(DefaultSource(kStageImage));
    isGood_ = context_->initialised && CompileProject(*context_).result == CompileResult::Good;
    DetachRenderContext(*context_);
}

bool OpenGlProbe::IsGood() {
    thread_.Join();
    DestroyRenderContext(std::move(context_));
    return isGood_;
}

}  // namespace pixelgrove
