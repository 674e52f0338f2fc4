// The probe at the start of the workbench: can this system's OpenGL play a project?
#pragma once

#include "render/OutputSurface.h"

namespace pixelgrove {

// Makes a context on the surface, compiles a stage with all that stands around it, and lets the context go.
// False when any of it fails. The calling thread must have no context current.
bool ProbeOpenGl(std::shared_ptr<OutputSurface> surface);

}  // namespace pixelgrove
