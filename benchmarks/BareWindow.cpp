// A bare window of Qt that draws one frame by OpenGL, in a context of the form that the output window has:
// what bench_startup takes turns with the workbench with.

#define GL_GLEXT_PROTOTYPES
#include <QFile>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QWindow>
#include <memory>
#include <utility>

namespace {

constexpr const char* kVertexText = R"(#version 330 core
layout(location = 0) in vec2 position;
out vec2 texCoord;
void main() { texCoord = 0.5 + 0.5 * position; gl_Position = vec4(position, 0.0, 1.0); }
)";
constexpr const char* kFragmentText = R"(#version 330
uniform vec3 iResolution;
out vec4 colour;
void main() { colour = vec4(gl_FragCoord.xy / iResolution.xy, 0.5, 1.0); }
)";

class BareWindow : public QWindow {
  public:
    explicit BareWindow(QList<QByteArray> shaders) : shaders_(std::move(shaders)) {
        QSurfaceFormat format;
        format.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
        format.setSwapInterval(0);
        format.setDepthBufferSize(0);
        format.setStencilBufferSize(0);
        setSurfaceType(QSurface::RasterGLSurface);
        setFormat(format);
    }

  protected:
    void exposeEvent(QExposeEvent*) override {
        if (!isExposed() || context_) return;
        context_ = std::make_unique<QOpenGLContext>();
        context_->setFormat(format());
        if (!context_->create() || !context_->makeCurrent(this)) QCoreApplication::exit(1);
        Draw();
        context_->swapBuffers(this);
    }

  private:
    void Draw() {
        constexpr float kQuad[] = {-1, -1, -1, 1, 1, -1, 1, -1, -1, 1, 1, 1};
        GLuint array = 0, buffer = 0;
        glGenVertexArrays(1, &array);
        glBindVertexArray(array);
        glGenBuffers(1, &buffer);
        glBindBuffer(GL_ARRAY_BUFFER, buffer);
        glBufferData(GL_ARRAY_BUFFER, sizeof kQuad, kQuad, GL_STATIC_DRAW);
        glEnableVertexAttribArray(0);
        glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
        glViewport(0, 0, width(), height());
        GLuint picture = 0;
        for (const QByteArray& text : shaders_) {
            UseProgram(text);
            glBindTexture(GL_TEXTURE_2D, picture);
            picture = &text == &shaders_.constLast() ? BindWindow() : BindTarget();
            glDrawArrays(GL_TRIANGLES, 0, 6);
        }
    }
    void UseProgram(const QByteArray& fragmentText) {
        const GLuint program = glCreateProgram();
        for (const auto& [kind, text] : {std::pair{GL_VERTEX_SHADER, kVertexText},
                                         std::pair{GL_FRAGMENT_SHADER, fragmentText.constData()}}) {
            const GLuint shader = glCreateShader(GLenum(kind));
            glShaderSource(shader, 1, &text, nullptr);
            glCompileShader(shader);
            glAttachShader(program, shader);
        }
        glLinkProgram(program);
        glUseProgram(program);
        glUniform3f(glGetUniformLocation(program, "iResolution"), float(width()), float(height()), 1);
        glUniform1f(glGetUniformLocation(program, "iTime"), 100);
    }
    GLuint BindTarget() {
        GLuint texture = 0, frameBuffer = 0;
        glGenTextures(1, &texture);
        const GLuint read = BoundTexture();
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, width(), height(), 0, GL_RGBA, GL_FLOAT, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glGenFramebuffers(1, &frameBuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
        glBindTexture(GL_TEXTURE_2D, read);
        return texture;
    }
    static GLuint BoundTexture() {
        GLint name = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &name);
        return GLuint(name);
    }
    GLuint BindWindow() {
        glBindFramebuffer(GL_FRAMEBUFFER, context_->defaultFramebufferObject());
        return 0;
    }

    const QList<QByteArray> shaders_;
    std::unique_ptr<QOpenGLContext> context_;
};

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QList<QByteArray> shaders;
    for (const QString& name : QCoreApplication::arguments().mid(1)) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) return 1;
        shaders.append(file.readAll());
    }
    if (shaders.isEmpty()) shaders.append(kFragmentText);
    BareWindow window(std::move(shaders));
    window.setTitle(QStringLiteral("Bare window"));
    window.setGeometry(0, 0, 950, 565);
    window.show();
    return QGuiApplication::exec();
}
