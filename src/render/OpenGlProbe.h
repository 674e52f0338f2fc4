// The probe at the start of the workbench: can this system's OpenGL play a project?
//
// Begun before the windows are made and asked when they are: the driver works on a thread of its own
// meanwhile. Main thread.
#pragma once

#include <memory>

#include "platform/Thread.h"
#include "render/OutputSurface.h"

namespace pixelgrove {

struct RenderContext;

class OpenGlProbe {
  public:
    // Makes a context on the surface and compiles a stage with all that stands around it.
    explicit OpenGlProbe(std::shared_ptr<OutputSurface> surface);
    ~OpenGlProbe();
    OpenGlProbe(const OpenGlProbe&) = delete;
    OpenGlProbe& operator=(const OpenGlProbe&) = delete;

    // Waits for the end, and lets the context go. False when any of it failed, also for no surface.
    bool IsGood();

  private:
    void Run();

    const std::shared_ptr<OutputSurface> surface_;
    // Of the thread until it ends.
    std::unique_ptr<RenderContext> context_;
    bool isGood_ = false;
    Thread thread_;
};

}  // namespace pixelgrove
