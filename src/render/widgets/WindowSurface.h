// WindowSurface: the output window as the render thread sees it.
//
// The window owns it together with the Player and the runs that draw into it. It owns the QWindow. Closed
// while a run draws into it, it keeps its size and waits off the screen: for a new window to take it up, or
// for the end of the run. It lets the QWindow go when it is retired; contexts made here hold the QWindow
// longer, so that closing the window never takes the drawable away from a thread that is using it. The
// QWindow is always deleted by the main thread.
#pragma once

#include <QEvent>
#include <QWindow>
#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/SynchronizedValue.h"
#include "render/OutputSurface.h"
#include "render/widgets/QtGlContext.h"

namespace pixelgrove {

class WindowSurface : public OutputSurface {
  public:
    // Takes the window over; it is destroyed with deleteLater. Bitmap events go to it. Main thread.
    explicit WindowSurface(QWindow* window);
    ~WindowSurface() override;

    // Any thread.
    SurfaceSize ClientSize() const override;
    // Null also once retired. The context must be destroyed as GlContext says.
    std::unique_ptr<GlContext> CreateContext() override;
    // Leaves the bitmap for the window, replacing one that is not shown yet; nothing when retired or null.
    void ShowBitmap(BitmapRef bitmap) override;
    bool TakeRepaintRequest() override { return repaintWanted_.exchange(false, std::memory_order_relaxed); }
    // Main thread.
    void SetInUse(bool inUse) override;

    // Any thread.
    bool IsRetired() const { return retired_.load(std::memory_order_acquire); }
    // A context made here is alive: a run draws, or drew last, into this window.
    bool HasContexts() const { return use_->contexts.load(std::memory_order_relaxed) > 0; }

    // The rest: main thread.
    void SetClientSize(SurfaceSize pixels);
    // While set, the client size reads 0 by 0.
    void SetMinimised(bool minimised);
    // Off the screen, SwapBuffers does nothing.
    void SetExposed(bool exposed);
    // What the last frame left in the window is gone.
    void RequestRepaint() { repaintWanted_.store(true, std::memory_order_relaxed); }
    // The bitmap that was left last, once; null without one. The answer to a bitmap event.
    BitmapRef TakeBitmap();
    // The window goes. In use, the surface keeps its last size for the run; otherwise it is retired: client
    // size 0 by 0, no events, no new contexts from now on.
    void Close();
    bool IsClosed() const { return closed_; }
    // The native window of a closed surface that is not retired, which is open again from now on; else null.
    QWindow* Reopen();

    // Type of the plain event that tells the window of a bitmap.
    static QEvent::Type BitmapEventType();

  private:
    void PublishSize();
    void Retire();

    std::atomic<uint64_t> packedSize_{0};  // width in the upper half; the main thread writes
    std::atomic<bool> retired_{false};
    std::atomic<bool> repaintWanted_{false};  // main sets, the render thread takes
    const std::shared_ptr<SurfaceUse> use_ = std::make_shared<SurfaceUse>();

    // Main thread.
    SurfaceSize size_;
    bool minimised_ = false;
    bool exposed_ = false;
    bool closed_ = false;
    bool inUse_ = false;

    struct Mailbox {
        std::shared_ptr<QWindow> window;  // null once retired
        BitmapRef bitmap;
        bool eventPending = false;
    };
    SynchronizedValue<Mailbox> mailbox_;
};

// A window surface whose window was closed: a new run needs another surface. Any thread.
bool IsRetired(const OutputSurface& surface);

}  // namespace pixelgrove
