// OutputView: the native window inside the output window: shows frames, and takes mouse and keys for shaders.
//
// Owned by its WindowSurface. GL frames are drawn by the render thread without a word to this class; bitmaps
// arrive through the surface and are painted here. All functions: main thread.
#pragma once

#include <QBackingStore>
#include <QHash>
#include <QWindow>
#include <functional>
#include <memory>

#include "render/widgets/WindowSurface.h"

class QKeyEvent;

namespace pixelgrove {

struct AppState;

class OutputView : public QWindow {
    Q_OBJECT
  public:
    // A view and the surface that owns it. The pair keeps itself alive until the surface is retired; of the
    // record nothing is asked once the view has been let go.
    static OutputView* Create(const AppState& app);
    ~OutputView() override;

    const std::shared_ptr<WindowSurface>& Surface() const { return surface_; }

    // Feeds the keyboard rows while a context lives on the surface, but for keys that takeKey keeps.
    void FeedKey(const QKeyEvent& event);
    // Asked first for each key, pressed and released; may be empty.
    std::function<bool(const QKeyEvent& event)> takeKey;
    // The view of a surface whose window was closed under a run that goes on; null for any other surface.
    static OutputView* TakeUp(OutputSurface* surface);
    // Takes the view out of its container and off the screen, and closes the surface. The view goes when no
    // run and no context needs it.
    void LetGo();

  Q_SIGNALS:
    void MenuRequested(const QPoint& globalPosition);

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

  private:
    explicit OutputView(const AppState& app);
    void UpdateClientSize();
    // Stretched over the client area; black without a bitmap.
    void Paint(const BitmapRef& bitmap);
    bool IsInside(const QMouseEvent& event) const;
    QPoint PixelPosition(const QMouseEvent& event) const;

    const AppState& app_;
    std::shared_ptr<WindowSurface> surface_;
    std::unique_ptr<QBackingStore> store_;
    BitmapRef shown_;                // last bitmap painted
    QHash<quint32, int> heldCodes_;  // code that each held key went down with, by scan code
    bool pressedHere_ = false;       // the left button went down in the picture and has not come up since
};

}  // namespace pixelgrove
