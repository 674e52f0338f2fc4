// The least that a program does to draw a picture of 64x64 without a window and to have its bytes: what
// bench_startup takes turns with pixelgrove-render with. The first device with EGL is taken, as there.

#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include "BareGl.h"

namespace {

constexpr int kSide = 64;

EGLDisplay FindDisplay() {
    const auto queryDevices =
        reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    const auto getDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    EGLDeviceEXT devices[16];
    EGLint count = 0;
    if (!queryDevices || !getDisplay || !queryDevices(16, devices, &count)) return EGL_NO_DISPLAY;
    for (EGLint i = 0; i < count; ++i) {
        const EGLDisplay display = getDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr);
        if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr)) return display;
    }
    return EGL_NO_DISPLAY;
}

void BindTarget() {
    GLuint texture = 0, frameBuffer = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, kSide, kSide, 0, GL_RGBA, GL_FLOAT, nullptr);
    glGenFramebuffers(1, &frameBuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glViewport(0, 0, kSide, kSide);
}

}  // namespace

int main() {
    const EGLDisplay display = FindDisplay();
    if (display == EGL_NO_DISPLAY || !eglBindAPI(EGL_OPENGL_API)) return 1;
    const EGLContext context = eglCreateContext(display, nullptr, EGL_NO_CONTEXT, nullptr);
    if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) return 1;
    BindTarget();
    UseBareProgram(kBareFragmentText, kSide, kSide);
    BindBareQuad();
    DrawBareQuad();
    static unsigned char pixels[kSide * kSide * 4];
    glReadPixels(0, 0, kSide, kSide, GL_BGRA, GL_UNSIGNED_BYTE, pixels);
    const bool isDrawn = glGetError() == GL_NO_ERROR && pixels[0] == 128;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display, context);
    return isDrawn ? 0 : 1;
}
