// RenderContext: all that one run needs: the GL context, sizes, time, and the running form of the project.
//
// Made and used by the render thread alone; after that thread has ended the main thread destroys it.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "controls/LiveValues.h"
#include "core/AppState.h"
#include "core/IncludeContext.h"
#include "core/ShaderProject.h"
#include "render/OutputSurface.h"

namespace pixelgrove {

// A picture in 8 bits a channel, on its way to memory.
struct ReadBackTarget {
    uint32_t texture = 0;
    uint32_t frameBuffer = 0;
    SurfaceSize size;
};

// The pictures of a run whose place this one takes, by stage: see render/KeptTargets.h.
struct KeptTargets {
    struct Pair {
        std::array<uint32_t, 2> frameBuffers{};
        std::array<uint32_t, 2> textures{};
        uint32_t writeIndex = 0;
    };
    std::array<Pair, kStageCount> stages;
    // Of the flat ones.
    SurfaceSize size;
    uint32_t sampleExponent = 0;
    uint32_t format = 0;
};

struct RenderContext {
    bool initialised = false;
    std::unique_ptr<GlContext> glContext;
    IncludeContext includeContext;
    std::shared_ptr<OutputSurface> surface;  // its client area is the render size
    std::array<float, 3> resolution{};       // iResolution: width, height, 1
    SurfaceSize forcedSize;                  // render size while recording
    bool forcedSizeOn = false;
    SurfaceSize clientSize;                   // last seen client area
    SurfaceSize renderSize;                   // the size that the targets have now
    float playTime = 0.0f;                    // iTime
    float frameRate = 0.0f;                   // iFrameRate
    int32_t frameCounter = -1;                // the count behind iFrame
    std::array<float, 4> mouse{};             // iMouse
    std::array<float, 4> date{};              // iDate
    uint64_t runStartMs = 0;                  // set by CompileProject
    QByteArray versionLine = "#version 330";  // replaced from the driver's version at each compile
    uint32_t sampleExponent = 0;              // multisample exponent of the targets, 0 none
    uint32_t frameBufferFormat = gl::kRgba32f;
    uint32_t targetFormat = 0;  // what it was when the targets were made
    ShaderProject project;
    std::optional<KeptTargets> kept;  // until the project is compiled

    uint32_t vertexArray = 0;
    uint32_t vertexBuffer = 0;
    ReadBackTarget readBack;
    uint32_t paletteTexture = 0;
    uint32_t paletteWidth = 0;
    uint64_t paletteSerial = 0;
    uint32_t keyboardTexture = 0;
    uint32_t audioTexture = 0;
    uint32_t webcamTexture = 0;
    std::vector<uint32_t> webcamFrame;  // its pixels, for as long as it is filled again and again
    const bool resizable = true;

    // iFrameRate and iDate of a run that is to be the same every time; else the machine's clocks give them.
    std::optional<float> fixedFrameRate;
    std::optional<std::array<float, 4>> fixedDate;

    UniformTable uniforms;                  // this frame's live values; entry 0 is the time step
    std::vector<UniformValue> fixedValues;  // sent to every stage as they are, behind the live ones
};

// A context on the surface, current on the calling thread, with the quad in place. Null when the surface
// gives no GL context. Whether OpenGL is good enough shows in `initialised`. `past` is what another run left
// on this surface, detached, or null: its GL context is taken over with the pictures of its stages.
std::unique_ptr<RenderContext> CreateRenderContext(std::shared_ptr<OutputSurface> surface,
                                                   std::shared_ptr<RenderContext> past = nullptr);

// Ends the calling thread's hold on the context so that another thread may destroy it.
void DetachRenderContext(RenderContext& context);

// Frees stages and context. The thread that detached it is gone, or is the caller.
void DestroyRenderContext(std::unique_ptr<RenderContext> context);

}  // namespace pixelgrove
