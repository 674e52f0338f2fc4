#include "render/GlSetup.h"

#include <GL/glew.h>

#include <QtGlobal>
#include <array>
#include <cstdio>
#include <mutex>
#include <utility>

namespace pixelgrove {

namespace {

std::mutex setupLock;
std::string versionText = "Unknown";
bool entryPointsLoaded = false;

// What fails in every frame would fill a log. Counted by the low bits of the codes, which lie side by side.
constexpr int kMostReports = 10;
thread_local std::array<int, 8> reports{};

// GLEW's pointers are process-wide and the same for every context of one platform, so they are loaded once: a
// second run that starts while an abandoned one still draws must not rewrite them under its hands.
bool LoadEntryPoints() {
    if (entryPointsLoaded) return true;
    glewExperimental = GL_TRUE;
    const GLenum result = glewInit();
    // Under EGL there is no GLX display to ask, yet every entry point was loaded.
    const bool good = result == GLEW_OK || result == GLEW_ERROR_NO_GLX_DISPLAY;
    entryPointsLoaded = good && glCreateShader && glGenFramebuffers;
    return entryPointsLoaded;
}

GlVersion CurrentVersion() {
    GlVersion version;
    glGetIntegerv(GL_MAJOR_VERSION, &version.major);
    glGetIntegerv(GL_MINOR_VERSION, &version.minor);
    return version;
}

}  // namespace

GlVersion VersionOf(GlContext& context) {
    if (!context.MakeCurrent()) return {};
    const GlVersion version = CurrentVersion();
    context.DoneCurrent();
    return version;
}

std::unique_ptr<GlContext> ChooseGlContext(const MakeGlContext& make,
                                           const std::function<GlVersion(GlContext&)>& versionOf) {
    std::unique_ptr<GlContext> plain;
    if (qEnvironmentVariableIntValue("PIXELGROVE_GL_CORE") == 0) plain = make(std::nullopt);
    if (plain && versionOf(*plain) >= kLeastGlVersion) return plain;
    for (int minor = 6; minor >= kLeastGlVersion.minor; --minor) {
        std::unique_ptr<GlContext> core = make(GlVersion{4, minor});
        if (core && versionOf(*core) >= kLeastGlVersion) return core;
    }
    return plain ? std::move(plain) : make(std::nullopt);
}

bool InitOpenGL(GlContext& context) {
    if (!context.MakeCurrent()) return false;
    reports.fill(0);
    std::lock_guard lock(setupLock);
    const bool usable = LoadEntryPoints() && CurrentVersion() >= kLeastGlVersion;
    if (const auto* text = reinterpret_cast<const char*>(glGetString(GL_VERSION))) versionText = text;
    // glewInit leaves errors behind when it asks a core context for its extension string. Bounded, since a
    // context that was lost reports forever.
    for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
    }
    return usable;
}

std::string OpenGlVersionText() {
    std::lock_guard lock(setupLock);
    return versionText;
}

const char* GlErrorText(uint32_t code) {
    switch (code) {
        case GL_INVALID_ENUM:
            return "GL_INVALID_ENUM: An unacceptable value is specified for an enumerated argument.";
        case GL_INVALID_VALUE:
            return "GL_INVALID_VALUE: A numeric argument is out of range.";
        case GL_INVALID_OPERATION:
            return "GL_INVALID_OPERATION: The specified operation is not allowed in the current state.";
        case GL_STACK_OVERFLOW:
            return "GL_STACK_OVERFLOW: This command would cause a stack overflow.";
        case GL_STACK_UNDERFLOW:
            return "GL_STACK_UNDERFLOW: This command would cause a stack underflow.";
        case GL_OUT_OF_MEMORY:
            return "GL_OUT_OF_MEMORY: There is not enough memory left to execute the command.";
        case GL_INVALID_FRAMEBUFFER_OPERATION:
            return "GL_INVALID_FRAMEBUFFER_OPERATION: The framebuffer object is not complete.";
        default:
            return "Unknown error code.";
    }
}

uint32_t ShowGLError() {
    const GLenum code = glGetError();
    if (code == GL_NO_ERROR) return code;
    int& count = reports[code % reports.size()];
    if (count < kMostReports) {
        ++count;
        std::fprintf(stderr, "%s%s\n", GlErrorText(code),
                     count == kMostReports ? " (Said ten times; not again in this run.)" : "");
    }
    return code;
}

}  // namespace pixelgrove
