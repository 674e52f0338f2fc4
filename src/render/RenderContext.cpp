#include "render/RenderContext.h"

#include <GL/glew.h>

#include "render/GlSetup.h"
#include "render/KeptTargets.h"

namespace pixelgrove {

namespace {

// Two triangles; per vertex two floats of position, two of texture coordinate.
constexpr float kQuad[] = {
    -1, -1, 0, 0,  //
    -1, 1,  0, 1,  //
    1,  -1, 1, 0,  //
    1,  -1, 1, 0,  //
    -1, 1,  0, 1,  //
    1,  1,  1, 1,  //
};

void CreateQuad(RenderContext& context) {
    glGenVertexArrays(1, &context.vertexArray);
    glBindVertexArray(context.vertexArray);
    glGenBuffers(1, &context.vertexBuffer);
    glBindBuffer(GL_ARRAY_BUFFER, context.vertexBuffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof kQuad, kQuad, GL_STATIC_DRAW);
    constexpr GLsizei stride = 4 * sizeof(float);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, stride, nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<const void*>(8));
    glBindVertexArray(0);
    ShowGLError();
}

}  // namespace

std::unique_ptr<RenderContext> CreateRenderContext(std::shared_ptr<OutputSurface> surface,
                                                   std::shared_ptr<RenderContext> past) {
    auto context = std::make_unique<RenderContext>();
    context->surface = std::move(surface);
    context->clientSize = context->surface->ClientSize();
    context->renderSize = context->clientSize;
    context->resolution = {float(context->clientSize.width), float(context->clientSize.height), 1.0f};
    if (past && past->initialised && past->glContext->MakeCurrent()) {
        context->kept = LeavePictures(*past);
        context->glContext = std::move(past->glContext);
    } else {
        past.reset();
        context->glContext = context->surface->CreateContext();
    }
    if (!context->glContext) return nullptr;
    context->initialised = InitOpenGL(*context->glContext);
    if (context->initialised) CreateQuad(*context);
    return context;
}

void DetachRenderContext(RenderContext& context) {
    if (context.glContext) context.glContext->Detach();
}

void DestroyRenderContext(std::unique_ptr<RenderContext> context) {
    if (!context) return;
    // The GL objects go with their context, which shares with no other.
    context->glContext.reset();
    context.reset();
}

}  // namespace pixelgrove
