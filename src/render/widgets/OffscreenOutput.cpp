#include "render/widgets/OffscreenOutput.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QThread>
#include <utility>

#include "render/widgets/QtGlContext.h"

namespace pixelgrove {
namespace {

class OffscreenOutput : public OutputSurface {
  public:
    OffscreenOutput(SurfaceSize size, std::shared_ptr<QOffscreenSurface> surface)
        : size_(size), surface_(std::move(surface)) {}

    SurfaceSize ClientSize() const override { return size_; }
    std::unique_ptr<GlContext> CreateContext() override { return CreateQtGlContext(surface_, use_, false); }
    void ShowBitmap(BitmapRef) override {}

  private:
    const SurfaceSize size_;
    const std::shared_ptr<QOffscreenSurface> surface_;
    const std::shared_ptr<SurfaceUse> use_ = std::make_shared<SurfaceUse>();
};

void DeleteOnMainThread(QOffscreenSurface* surface) {
    // Some platforms stand a hidden window behind it, which only the main thread may destroy.
    if (surface->thread() == QThread::currentThread()) {
        delete surface;
    } else {
        surface->deleteLater();
    }
}

}  // namespace

std::shared_ptr<OutputSurface> CreateOffscreenOutput(SurfaceSize size) {
    if (!qGuiApp || QThread::currentThread() != qGuiApp->thread()) return nullptr;
    std::shared_ptr<QOffscreenSurface> surface(new QOffscreenSurface, DeleteOnMainThread);
    surface->setFormat(GlSurfaceFormat());
    surface->create();
    if (!surface->isValid()) return nullptr;
    return std::make_shared<OffscreenOutput>(size, std::move(surface));
}

}  // namespace pixelgrove
