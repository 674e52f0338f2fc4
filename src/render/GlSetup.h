// Bringing OpenGL up: the choice of a context, entry points, the version text, error polling.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "render/OutputSurface.h"

namespace pixelgrove {

struct GlVersion {
    int major = 0;
    int minor = 0;
    auto operator<=>(const GlVersion&) const = default;
};

// The texts around every stage need GLSL 4.20.
constexpr GlVersion kLeastGlVersion{4, 2};

// Makes a plain context for nothing, a core context of at least the version otherwise; null when the system
// gives none.
using MakeGlContext = std::function<std::unique_ptr<GlContext>(std::optional<GlVersion> core)>;

// What the driver says of the context; 0.0 when it can't be made current. Afterwards none is current.
GlVersion VersionOf(GlContext& context);

// The plain context where its version will do. Some drivers, those of virtual machines above all, give new
// versions to core contexts alone: then a core context of the highest version. The plain one when nothing is
// new enough; null when there is none at all. With PIXELGROVE_GL_CORE=1 in the environment core contexts come
// first. On the thread that will render.
std::unique_ptr<GlContext> ChooseGlContext(const MakeGlContext& make,
                                           const std::function<GlVersion(GlContext&)>& versionOf = VersionOf);

// Makes the context current, loads the entry points (once per process), and reads the version text. True when
// glCreateShader and glGenFramebuffers exist and the version is high enough. Any one thread, with no other
// context current on it.
bool InitOpenGL(GlContext& context);

// "Unknown" until a context was made, then what glGetString(GL_VERSION) gave. Any thread.
std::string OpenGlVersionText();

// Polls glGetError once; a code other than 0 goes to the debug output (stderr) with its text, each code at
// most ten times from one InitOpenGL of the calling thread to the next. Returns the code.
uint32_t ShowGLError();
const char* GlErrorText(uint32_t code);

}  // namespace pixelgrove
