// Bringing OpenGL up: entry points, the probe at start-up, the version text, error polling.
#pragma once

#include <cstdint>
#include <string>

#include "render/OutputSurface.h"

namespace pixelgrove {

// Makes the context current, loads the entry points (once per process), and reads the version text.
// True when glCreateShader and glGenFramebuffers exist. Any one thread, with no other context current on it.
bool InitOpenGL(GlContext& context);

// Makes a context on the surface, tries InitOpenGL, and lets the context go again. Main thread, at start.
bool ProbeOpenGl(OutputSurface& surface);

// "Unknown" until a context was made, then what glGetString(GL_VERSION) gave. Any thread.
std::string OpenGlVersionText();

// Polls glGetError once; a code other than 0 goes to the debug output (stderr) with its text, each code at
// most ten times from one InitOpenGL of the calling thread to the next. Returns the code.
uint32_t ShowGLError();
const char* GlErrorText(uint32_t code);

}  // namespace pixelgrove
