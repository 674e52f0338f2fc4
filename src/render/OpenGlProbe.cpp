#include "render/OpenGlProbe.h"

#include <utility>

#include "core/Stages.h"
#include "platform/CodePage.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"

namespace pixelgrove {

bool ProbeOpenGl(std::shared_ptr<OutputSurface> surface) {
    std::unique_ptr<RenderContext> context = CreateRenderContext(std::move(surface));
    if (!context) return false;
    ShaderStage& image = context->project.stages[kStageImage];
    image.kind = kStageImage;
    image.source = ToCodePage(DefaultSource(kStageImage));
    const bool usable = context->initialised && CompileProject(*context).result == CompileResult::Good;
    DetachRenderContext(*context);
    DestroyRenderContext(std::move(context));
    return usable;
}

}  // namespace pixelgrove
