#include "render/widgets/QtGlContext.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QThread>
#include <optional>
#include <utility>

#include "render/GlSetup.h"

namespace pixelgrove {
namespace {

// Null once the application object is gone.
QThread* MainThread() {
    return QCoreApplication::instance() ? QCoreApplication::instance()->thread() : nullptr;
}

class QtGlContext : public GlContext {
  public:
    QtGlContext(std::unique_ptr<QOpenGLContext> context, std::shared_ptr<QSurface> surface,
                std::shared_ptr<SurfaceUse> use, bool hasDrawable)
        : context_(std::move(context)),
          surface_(std::move(surface)),
          use_(std::move(use)),
          hasDrawable_(hasDrawable) {
        use_->contexts.fetch_add(1, std::memory_order_relaxed);
    }

    ~QtGlContext() override {
        use_->contexts.fetch_sub(1, std::memory_order_relaxed);
        if (IsMine()) {
            LeaveThread();
        } else if (!context_->thread()) {
            // Detached. What of it belongs to the main thread is let go there.
            context_->moveToThread(QThread::currentThread());
            QThread* main = MainThread();
            if (!main || main == QThread::currentThread()) return;
            context_->moveToThread(main);
            context_.release()->deleteLater();
        } else {
            // Another thread may be inside the driver with it. Nothing can free it safely, nor the surface it
            // draws on: both stay for the rest of the process.
            [[maybe_unused]] auto* left = context_.release();
            new std::shared_ptr<QSurface>(std::move(surface_));
        }
    }

    bool MakeCurrent() override {
        if (!context_->thread()) context_->moveToThread(QThread::currentThread());
        // Qt ends the process when a context is made current by a thread that does not own it.
        return IsMine() && context_->makeCurrent(surface_.get());
    }

    void DoneCurrent() override {
        if (IsMine()) context_->doneCurrent();
    }

    void SwapBuffers() override {
        if (hasDrawable_ && use_->mayShow.load(std::memory_order_acquire) && IsMine() &&
            QOpenGLContext::currentContext() == context_.get()) {
            context_->swapBuffers(surface_.get());
        }
    }

    bool HasDrawable() const override { return hasDrawable_; }

    void Detach() override {
        if (!IsMine()) return;
        LeaveThread();
        context_->moveToThread(nullptr);  // whoever makes it current next owns it
    }

  private:
    bool IsMine() const { return context_->thread() == QThread::currentThread(); }

    void LeaveThread() {
        context_->doneCurrent();
        // The group deletes itself through its thread's events, which a rendering thread never handles.
        QOpenGLContextGroup* group = context_->shareGroup();
        QThread* main = MainThread();
        if (main && group->thread() == QThread::currentThread()) group->moveToThread(main);
    }

    std::unique_ptr<QOpenGLContext> context_;
    std::shared_ptr<QSurface> surface_;
    std::shared_ptr<SurfaceUse> use_;
    const bool hasDrawable_;
};

}  // namespace

QSurfaceFormat GlSurfaceFormat() {
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
    format.setSwapInterval(0);
    format.setDepthBufferSize(0);
    format.setStencilBufferSize(0);
    return format;
}

std::unique_ptr<GlContext> CreateQtGlContext(std::shared_ptr<QSurface> surface,
                                             std::shared_ptr<SurfaceUse> use, bool hasDrawable) {
    if (!surface || !use || !QCoreApplication::instance()) return nullptr;
    return ChooseGlContext([&](std::optional<GlVersion> core) -> std::unique_ptr<GlContext> {
        QSurfaceFormat format = GlSurfaceFormat();
        if (core) {
            format.setVersion(core->major, core->minor);
            format.setProfile(QSurfaceFormat::CoreProfile);
        }
        auto context = std::make_unique<QOpenGLContext>();
        context->setFormat(format);
        if (!context->create()) return nullptr;
        return std::make_unique<QtGlContext>(std::move(context), surface, use, hasDrawable);
    });
}

}  // namespace pixelgrove
