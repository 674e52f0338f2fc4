#include "render/widgets/OutputView.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

#include "core/AppState.h"
#include "core/PlayTime.h"
#include "render/InputState.h"
#include "render/widgets/BitmapImage.h"
#include "render/widgets/VirtualKeys.h"

namespace pixelgrove {

OutputView::OutputView(const AppState& app) : app_(app) {
    setSurfaceType(QSurface::RasterGLSurface);
    setFormat(GlSurfaceFormat());
}

OutputView::~OutputView() = default;

OutputView* OutputView::Create(const AppState& app) {
    auto* view = new OutputView(app);
    view->surface_ = std::make_shared<WindowSurface>(view);
    return view;
}

OutputView* OutputView::TakeUp(OutputSurface* surface) {
    auto* window = dynamic_cast<WindowSurface*>(surface);
    return window ? qobject_cast<OutputView*>(window->Reopen()) : nullptr;
}

void OutputView::LetGo() {
    hide();
    setParent(nullptr);
    store_.reset();
    pressedHere_ = false;
    // May drop the last reference to this object, which then goes with the next turn of the event loop.
    surface_->Close();
}

bool OutputView::event(QEvent* event) {
    if (event->type() == WindowSurface::BitmapEventType()) {
        if (BitmapRef bitmap = surface_->TakeBitmap()) {
            shown_ = std::move(bitmap);
            Paint(shown_);
        }
        return true;
    }
    return QWindow::event(event);
}

void OutputView::resizeEvent(QResizeEvent*) {
    UpdateClientSize();
}

void OutputView::UpdateClientSize() {
    const qreal ratio = devicePixelRatio();
    surface_->SetClientSize({int(std::lround(width() * ratio)), int(std::lround(height() * ratio))});
}

void OutputView::exposeEvent(QExposeEvent*) {
    // One that was under way when the view was let go comes too, and nobody is asked anything then.
    const bool isShown = isExposed() && !surface_->IsClosed();
    surface_->SetExposed(isShown);
    if (!isShown) return;
    // The window may have come to a screen of another pixel ratio.
    UpdateClientSize();
    // A run that started elsewhere, or failed to compile, never fills this window.
    const RunControls& run = *app_.run;
    const bool draws = run.hasContext != 0 && surface_->HasContexts() && run.compileFailed == 0;
    if (!draws) {
        shown_.reset();
        Paint(nullptr);
    } else if (shown_ && (run.useGdiDisplay != 0 || run.recordingActive != 0)) {
        Paint(shown_);
    } else {
        surface_->RequestRepaint();
    }
}

void OutputView::Paint(const BitmapRef& bitmap) {
    if (!isExposed() || surface_->IsRetired() || size().isEmpty()) return;
    if (!store_) store_ = std::make_unique<QBackingStore>(this);
    if (store_->size() != size()) store_->resize(size());
    const QRect area(QPoint(0, 0), size());
    store_->beginPaint(area);
    {
        QPainter painter(store_->paintDevice());
        const qreal ratio = devicePixelRatio();
        QImage image;
        if (bitmap) {
            image = StretchedImage(*bitmap, int(std::lround(width() * ratio)),
                                   int(std::lround(height() * ratio)));
        }
        if (image.isNull()) {
            painter.fillRect(area, Qt::black);
        } else {
            image.setDevicePixelRatio(ratio);
            painter.drawImage(0, 0, image);
        }
    }
    store_->endPaint();
    store_->flush(area);
}

QPoint OutputView::PixelPosition(const QMouseEvent& event) const {
    const QPointF position = event.position() * devicePixelRatio();
    return {int(std::floor(position.x())), int(std::floor(position.y()))};
}

void OutputView::mousePressEvent(QMouseEvent* event) {
    // Without a window manager nobody else moves the focus here.
    if (!isActive()) requestActivate();
    if (event->button() == Qt::LeftButton) {
        pressedHere_ = true;
        if (!surface_->HasContexts()) return;
        const QPoint at = PixelPosition(*event);
        MousePressed(at.x(), at.y(), surface_->ClientSize().height);
    } else if (event->button() == Qt::RightButton) {
        Q_EMIT MenuRequested(event->globalPosition().toPoint());
    }
}

bool OutputView::IsInside(const QMouseEvent& event) const {
    return QRect(QPoint(0, 0), size())
        .contains(int(std::floor(event.position().x())), int(std::floor(event.position().y())));
}

// The window system goes on reporting a pressed pointer outside the view. Shaders are not to see that:
// outside, the position stands still and a release is missed.
void OutputView::mouseMoveEvent(QMouseEvent* event) {
    if (!IsInside(*event) || !surface_->HasContexts()) return;
    const QPoint at = PixelPosition(*event);
    MouseMoved(at.x(), at.y(), surface_->ClientSize().height);
}

void OutputView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    // The end of a drag that began on a frame comes here too, when the pointer has got above the picture.
    const bool isClick = std::exchange(pressedHere_, false);
    if (!IsInside(*event)) return;
    if (surface_->HasContexts()) MouseReleased();
    if (!isClick) return;
    if (app_.run->hasContext != 0) app_.run->timeRequest.Ask({RandomStartTime()});
}

void OutputView::keyPressEvent(QKeyEvent* event) {
    FeedKey(*event);
}

void OutputView::keyReleaseEvent(QKeyEvent* event) {
    FeedKey(*event);
}

void OutputView::FeedKey(const QKeyEvent& event) {
    if ((takeKey && takeKey(event)) || !surface_->HasContexts()) return;
    const quint32 scanCode = event.nativeScanCode();
    if (event.type() == QEvent::KeyPress) {
        const int code = VirtualKeyOf(event);
        if (code < 0) return;
        if (scanCode) heldCodes_.insert(scanCode, code);
        KeyPressed(code);
    } else if (!event.isAutoRepeat()) {
        // A modifier may have changed meanwhile and with it the key's symbol: release what was pressed.
        const int code = heldCodes_.contains(scanCode) ? heldCodes_.take(scanCode) : VirtualKeyOf(event);
        if (code >= 0) KeyReleased(code);
    }
}

}  // namespace pixelgrove
