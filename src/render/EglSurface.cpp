#include "render/EglSurface.h"

// EGL's headers would bring in Xlib otherwise, with its macros.
#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstring>

#include "render/GlSetup.h"

namespace pixelgrove {

namespace {

class EglContext : public GlContext {
  public:
    EglContext(EGLDisplay display, EGLContext context) : display_(display), context_(context) {}
    ~EglContext() override {
        if (eglGetCurrentContext() == context_) DoneCurrent();
        eglDestroyContext(display_, context_);
    }
    bool MakeCurrent() override {
        // The API is chosen per thread.
        return eglBindAPI(EGL_OPENGL_API) &&
               eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_);
    }
    void DoneCurrent() override {
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglReleaseThread();
    }
    void SwapBuffers() override {}
    bool HasDrawable() const override { return false; }
    void Detach() override { DoneCurrent(); }

  private:
    EGLDisplay display_;
    EGLContext context_;
};

class EglSurface : public OutputSurface {
  public:
    EglSurface(EGLDisplay display, SurfaceSize size) : display_(display), size_(size) {}
    SurfaceSize ClientSize() const override { return size_; }
    std::unique_ptr<GlContext> CreateContext() override {
        return ChooseGlContext([this](std::optional<GlVersion> core) { return MakeContext(core); });
    }
    void ShowBitmap(BitmapRef) override {}

  private:
    std::unique_ptr<GlContext> MakeContext(std::optional<GlVersion> core) const {
        if (!eglBindAPI(EGL_OPENGL_API)) return nullptr;
        const EGLint attributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                     EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        // Nothing is drawn into a surface, so a display without configs will do as well.
        if (!eglChooseConfig(display_, attributes, &config, 1, &count) || count == 0) config = nullptr;
        const EGLint coreForm[] = {EGL_CONTEXT_MAJOR_VERSION,
                                   core ? core->major : 0,
                                   EGL_CONTEXT_MINOR_VERSION,
                                   core ? core->minor : 0,
                                   EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                   EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                   EGL_NONE};
        const EGLContext context =
            eglCreateContext(display_, config, EGL_NO_CONTEXT, core ? coreForm : nullptr);
        if (context == EGL_NO_CONTEXT) return nullptr;
        return std::make_unique<EglContext>(display_, context);
    }
    EGLDisplay display_;
    SurfaceSize size_;
};

bool Supports(const char* list, const char* extension) {
    return list && std::strstr(list, extension) != nullptr;
}

bool Initialise(EGLDisplay display) {
    return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) &&
           Supports(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_surfaceless_context");
}

EGLDisplay FindDisplay() {
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    // Real devices first, so that a machine with a graphics card uses it.
    if (getPlatformDisplay && Supports(extensions, "EGL_EXT_platform_device") &&
        Supports(extensions, "EGL_EXT_device_enumeration")) {
        const auto queryDevices =
            reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
        EGLDeviceEXT devices[16];
        EGLint count = 0;
        if (queryDevices && queryDevices(16, devices, &count)) {
            for (EGLint i = 0; i < count; ++i) {
                const EGLDisplay display = getPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr);
                if (Initialise(display)) return display;
            }
        }
    }
    if (getPlatformDisplay && Supports(extensions, "EGL_MESA_platform_surfaceless")) {
        const EGLDisplay display =
            getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (Initialise(display)) return display;
    }
    const EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    return Initialise(display) ? display : EGL_NO_DISPLAY;
}

}  // namespace

std::shared_ptr<OutputSurface> CreateEglSurface(SurfaceSize size) {
    // One display for the process: EGL gives the same one for the same device anyway.
    static const EGLDisplay display = FindDisplay();
    if (display == EGL_NO_DISPLAY) return nullptr;
    return std::make_shared<EglSurface>(display, size);
}

}  // namespace pixelgrove
