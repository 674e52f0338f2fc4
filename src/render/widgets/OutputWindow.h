// OutputWindow: the top-level window "Shader Output": frame, context menu and life of the picture's view.
//
// Made on the heap, and shown before a run may draw into it; it deletes itself once closed. Its surface is
// registered in the Player at once and stays there after the close. While a run draws into that, the next
// window takes it up again. All functions: main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "render/widgets/WindowSurface.h"
#include "windows/widgets/FrameWindow.h"

class QMenu;

namespace pixelgrove {

class CommandRegistry;
class OutputView;
struct AppState;
struct Player;

// What plays in the window.
struct OutputState {
    bool isPlaying = false;
    uint32_t fps = 0;
    std::optional<int> recordedPercent;
};

class OutputWindow : public FrameWindow {
    Q_OBJECT
  public:
    // The context menu shows the states of its commands; a choice goes to runCommand. Records and commands
    // outlive the window.
    OutputWindow(AppState& app, Player& player, const CommandRegistry& commands,
                 std::function<void(int commandId)> runCommand);
    ~OutputWindow() override;

    // The native window inside; null once closed.
    OutputView* View() const { return view_; }
    const std::shared_ptr<WindowSurface>& Surface() const { return surface_; }

    // Gives the picture that many pixels, out of full screen and of the maximised state.
    void ResizePicture(const QSize& pixels);
    // Beside the title: how far a recording is, else the picture's size and the rate, else nothing.
    void ShowState(const OutputState& state);
    // A setting that outlives the window.
    bool IsAlwaysOnTop() const;
    void SetAlwaysOnTop(bool onTop);
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
    void ApplyAlwaysOnTop();
    void LetViewGo();

    AppState& app_;
    const CommandRegistry& commands_;
    std::function<void(int commandId)> runCommand_;
    OutputView* view_ = nullptr;
    std::shared_ptr<WindowSurface> surface_;
    QWidget* container_ = nullptr;
    int takenKey_ = -1;  // the key of TakeKey that is down
};

}  // namespace pixelgrove
