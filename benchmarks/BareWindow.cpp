// A bare window of Qt that draws one frame by OpenGL, in a context of the form that the output window has:
// what bench_startup takes turns with the workbench with.

#include "BareGl.h"

#include <QFile>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QWindow>
#include <memory>
#include <utility>

namespace {

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
        BindBareQuad();
        glViewport(0, 0, width(), height());
        GLuint picture = 0;
        for (const QByteArray& text : shaders_) {
            const GLuint program = UseBareProgram(text.constData(), float(width()), float(height()));
            glUniform1f(glGetUniformLocation(program, "iTime"), 100);
            glBindTexture(GL_TEXTURE_2D, picture);
            picture = &text == &shaders_.constLast() ? BindWindow() : BindTarget();
            DrawBareQuad();
        }
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
    if (shaders.isEmpty()) shaders.append(kBareFragmentText);
    BareWindow window(std::move(shaders));
    window.setTitle(QStringLiteral("Bare window"));
    window.setGeometry(0, 0, 950, 565);
    window.show();
    return QGuiApplication::exec();
}
