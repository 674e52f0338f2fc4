// The least that a program does to draw a picture of 64x64 without a window and to have its bytes: what
// bench_startup takes turns with pixelgrove-render with. The first device with EGL is taken, as there.

#define EGL_NO_X11
#define GL_GLEXT_PROTOTYPES
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>

#include <utility>

namespace {

constexpr int kSide = 64;
constexpr const char* kVertexText = R"(#version 330 core
layout(location = 0) in vec2 position;
void main() { gl_Position = vec4(position, 0.0, 1.0); }
)";
constexpr const char* kFragmentText = R"(#version 330
uniform vec3 iResolution;
out vec4 colour;
void main() { colour = vec4(gl_FragCoord.xy / iResolution.xy, 0.5, 1.0); }
)";

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

bool UseProgram() {
    const GLuint program = glCreateProgram();
    for (const auto& [kind, text] :
         {std::pair{GL_VERTEX_SHADER, kVertexText}, std::pair{GL_FRAGMENT_SHADER, kFragmentText}}) {
        const GLuint shader = glCreateShader(GLenum(kind));
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
    }
    glLinkProgram(program);
    GLint isLinked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    glUseProgram(program);
    glUniform3f(glGetUniformLocation(program, "iResolution"), kSide, kSide, 1);
    return isLinked != 0;
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

void DrawQuad() {
    constexpr float kQuad[] = {-1, -1, -1, 1, 1, -1, 1, -1, -1, 1, 1, 1};
    GLuint array = 0, buffer = 0;
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof kQuad, kQuad, GL_STATIC_DRAW);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glDrawArrays(GL_TRIANGLES, 0, 6);
}

}  // namespace

int main() {
    const EGLDisplay display = FindDisplay();
    if (display == EGL_NO_DISPLAY || !eglBindAPI(EGL_OPENGL_API)) return 1;
    const EGLContext context = eglCreateContext(display, nullptr, EGL_NO_CONTEXT, nullptr);
    if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) return 1;
    BindTarget();
    if (!UseProgram()) return 1;
    DrawQuad();
    static unsigned char pixels[kSide * kSide * 4];
    glReadPixels(0, 0, kSide, kSide, GL_BGRA, GL_UNSIGNED_BYTE, pixels);
    const bool isDrawn = glGetError() == GL_NO_ERROR && pixels[0] == 128;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display, context);
    return isDrawn ? 0 : 1;
}
