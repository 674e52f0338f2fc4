// OutputWindow: the top-level window "Shader Output": frame, context menu and life of the picture's view.
//
// Made on the heap, and shown before a run may draw into it; it deletes itself once closed. Its surface is
// registered in AppState at once and stays there after the close. While a run draws into that, the next
// window takes it up again. All functions: main thread.
#pragma once

#include <memory>

#include "render/widgets/WindowSurface.h"
#include "windows/widgets/FrameWindow.h"

class QMenu;

namespace pixelgrove {

class OutputView;
struct AppState;

class OutputWindow : public FrameWindow {
    Q_OBJECT
  public:
    // The record outlives the window.
    explicit OutputWindow(AppState& app);
    ~OutputWindow() override;

    // The native window inside; null once closed.
    OutputView* View() const { return view_; }
    const std::shared_ptr<WindowSurface>& Surface() const { return surface_; }

    // Runs a command of the context menu, or kCmdOk and kCmdCancel, which close. False for a command that is
    // not this window's.
    bool RunCommand(int commandId);
    // A fresh context menu as things stand; it is the caller's.
    std::unique_ptr<QMenu> MakeContextMenu();

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

  private:
    void ShowMenu(const QPoint& globalPosition);
    // F11, and Escape in full screen: those the shader doesn't see.
    bool TakeKey(const QKeyEvent& event);
    void ResizePicture(const QSize& pixels);
    void ApplyAlwaysOnTop();
    void LetViewGo();

    AppState& app_;
    OutputView* view_ = nullptr;
    std::shared_ptr<WindowSurface> surface_;
    QWidget* container_ = nullptr;
    int takenKey_ = -1;  // the key of TakeKey that is down
};

}  // namespace pixelgrove
