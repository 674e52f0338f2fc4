#include "render/widgets/WindowSurface.h"

#include <QCoreApplication>
#include <utility>

namespace pixelgrove {

WindowSurface::WindowSurface(QWindow* window) {
    Hold(mailbox_)->window.reset(window, [](QWindow* w) { w->deleteLater(); });
}

WindowSurface::~WindowSurface() = default;

SurfaceSize WindowSurface::ClientSize() const {
    uint64_t packed = packedSize_.load(std::memory_order_relaxed);
    return {int(packed >> 32), int(packed & 0xffffffffu)};
}

std::unique_ptr<GlContext> WindowSurface::CreateContext() {
    std::shared_ptr<QWindow> window = Hold(mailbox_)->window;
    // Outside the lock: making a context may take long, and the main thread must not wait for it.
    return window ? CreateQtGlContext(std::move(window), use_, true) : nullptr;
}

void WindowSurface::ShowBitmap(BitmapRef bitmap) {
    if (!bitmap) return;
    const Hold mailbox(mailbox_);
    if (!mailbox->window) return;
    mailbox->bitmap.swap(bitmap);
    if (std::exchange(mailbox->eventPending, true)) return;
    // Under the lock, so that the window can't be let go between the look and the post.
    QCoreApplication::postEvent(mailbox->window.get(), new QEvent(BitmapEventType()));
}

void WindowSurface::SetClientSize(SurfaceSize pixels) {
    size_ = pixels;
    PublishSize();
}

void WindowSurface::SetMinimised(bool minimised) {
    minimised_ = minimised;
    PublishSize();
}

void WindowSurface::SetExposed(bool exposed) {
    exposed_ = exposed;
    use_->mayShow.store(exposed_ && !IsRetired(), std::memory_order_release);
}

BitmapRef WindowSurface::TakeBitmap() {
    const Hold mailbox(mailbox_);
    mailbox->eventPending = false;
    return std::exchange(mailbox->bitmap, nullptr);
}

void WindowSurface::Close() {
    closed_ = true;
    SetExposed(false);
    SetMinimised(false);
    if (!inUse_) Retire();
}

QWindow* WindowSurface::Reopen() {
    if (!closed_ || IsRetired()) return nullptr;
    closed_ = false;
    return Hold(mailbox_)->window.get();
}

void WindowSurface::SetInUse(bool inUse) {
    inUse_ = inUse;
    if (!inUse_ && closed_ && !IsRetired()) Retire();
}

void WindowSurface::Retire() {
    retired_.store(true, std::memory_order_release);
    use_->mayShow.store(false, std::memory_order_release);
    PublishSize();
    const Hold mailbox(mailbox_);
    mailbox->window.reset();
    mailbox->bitmap.reset();
}

QEvent::Type WindowSurface::BitmapEventType() {
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

void WindowSurface::PublishSize() {
    bool none = minimised_ || IsRetired();
    uint64_t packed = none ? 0 : uint64_t(uint32_t(size_.width)) << 32 | uint32_t(size_.height);
    packedSize_.store(packed, std::memory_order_relaxed);
}

bool IsRetired(const OutputSurface& surface) {
    auto* window = dynamic_cast<const WindowSurface*>(&surface);
    return window && window->IsRetired();
}

}  // namespace pixelgrove
