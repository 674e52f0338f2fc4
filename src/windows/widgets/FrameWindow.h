// FrameWindow: a top-level window with the program's own frame: caption, menu bar, sizing border, grips.
// Every window of the program is one, so that all look alike and a proposed rectangle can be snapped, or
// moved with its group, before it is applied.
//
// The X window has no frame of its own, so its geometry is the frame's, with a window manager and without.
// Each frame tells the registry (Windows()) when it is made, moved, dragged, closed and destroyed. Main
// thread.
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <memory>
#include <optional>

#include "windows/FrameGeometry.h"
#include "windows/WindowRecord.h"
#include "windows/widgets/FrameFocus.h"

class QKeyEvent;
class QMenu;
class QMenuBar;

namespace pixelgrove {

class CaptionBar;
class ManagerDrag;
class PlaceWatch;

class FrameWindow : public QWidget {
    Q_OBJECT

  public:
    // Window: minimise, maximise and close in the caption, an entry of its own in task bars.
    // Dialog: close alone, above its owner. FixedDialog: that, and it can't be sized by the mouse.
    enum class Kind { Window, Dialog, FixedDialog };

    // The owner is the window that a dialog stays above; null for others.
    explicit FrameWindow(Kind kind = Kind::Window, QWidget* owner = nullptr);
    ~FrameWindow() override;

    // What the frame surrounds: forms are set up on it. It lives as long as the frame.
    QWidget* Client() const { return client_; }
    // Below the caption; the frame takes it over. Once.
    void SetMenuBar(QMenuBar* menuBar);
    QMenuBar* MenuBar() const { return menuBar_; }

    // Makes the client area that large; the frame grows around it and stays where its top left corner is. Of
    // a maximised window, the area that it gets when it is restored.
    void ResizeClient(const QSize& client);
    // Neither the user nor the program can size the client area below this.
    void SetMinimumClientSize(const QSize& client);
    // What the frame adds to its client.
    QSize FrameExtra() const;
    // The size of the frame around the smallest client; the caption's buttons have room too.
    QSize SmallestFrame() const;

    // On the screen: where the window system reports the window, or was asked to put it a moment ago.
    EdgeRect FrameRect() const { return FromQRect(geometry()); }
    // Asks for that place, also where the user couldn't drag it; what X11 can't count is brought to the
    // nearest that it can, and so is a size below SmallestFrame. A window manager may refuse it. A maximised
    // window is so no longer.
    void SetFrameRect(const EdgeRect& rect);
    // Whether FrameRect() is a report, and no answer is being waited for. The registry hears of the change.
    bool IsSettled() const;
    // The frame's place when it is neither maximised nor minimised.
    EdgeRect NormalRect() const;
    // A valid placement of how things are; its show command is 1 normal, 2 minimised, 3 maximised.
    WindowPlacement Placement() const;

    // Over the work area of its screen. The window manager is asked for it, or to end it, and the window is
    // maximised or not when that says so, which it may also do by itself. A window that isn't shown, or one
    // without a manager that maximises, is laid over the area at once. A window in full screen counts as
    // maximised.
    bool IsMaximised() const { return maximised_ || fullScreen_; }
    void SetMaximised(bool maximised);
    // The client area alone, over all of its screen. What else gives the window a place ends it.
    bool IsFullScreen() const { return fullScreen_; }
    void SetFullScreen(bool fullScreen);
    // The window manager is asked to. Nothing without one: nobody could bring the window back.
    void Minimise();
    // When it is shown it takes neither the focus nor the user's attention, and the other window keeps the
    // focus.
    void LeaveFocusTo(QWidget& other) { focus_.LeaveTo(other); }
    // Restore, Minimise, Maximise, Close, as far as the kind has them. Without a parent; it may outlive the
    // window.
    std::unique_ptr<QMenu> MakeWindowMenu();

  Q_SIGNALS:
    // The window was closed; next it is hidden, and may delete itself.
    void Closed();

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    friend class FrameEvents;  // sees presses and keys before the window's children do

    static void InstallEvents();
    bool IsPlain() const;
    FrameShape Shape() const;
    FrameZone ZoneOf(const QMouseEvent& event) const;
    QSize ExtraFor(const FrameShape& shape) const;
    void LayOut();
    void NotePlace();
    void ChangeMaximised(bool maximised);
    void ChangeFullScreen(bool fullScreen);
    void FollowWindowManager();
    void BeginDrag();
    void RestoreUnder(const QPoint& pointer);
    bool HandOver(const QPoint& pointer);
    void DoHeldBack();
    void EndManagerDrag();
    EdgeRect ProposedBy(const QPoint& pointer) const;
    void FinishDrag();
    void TakeSettled(bool refused);
    void ShowZoneCursor(FrameZone zone);
    void ShowWindowMenu(const QPoint& globalPosition);
    bool TakeKey(const QKeyEvent& event);

    const Kind kind_;
    FrameFocus focus_;
    CaptionBar* caption_ = nullptr;
    QMenuBar* menuBar_ = nullptr;
    QWidget* client_ = nullptr;
    QSize minimumClient_{120, 40};

    EdgeRect normal_;                      // the last place while plain
    EdgeRect settledNormal_;               // the one before the changes of the last moments
    std::optional<EdgeRect> placeBefore_;  // while the window manager was asked to maximise
    QElapsedTimer sinceMove_;
    EdgeRect laidOver_;  // where it was put to be maximised without the window manager
    bool maximised_ = false;
    bool byManager_ = false;  // it was the window manager that maximised it
    bool restoring_ = false;  // and it was asked to make it normal again
    bool fullScreen_ = false;
    bool asksFullScreen_ = false;  // the last thing asked of the window manager was full screen

    PlaceWatch* place_ = nullptr;

    // The drag in progress; every proposal is measured from its start. A maximised window that is pressed has
    // a zone, but its drag begins only when it is pulled off its place.
    FrameZone dragZone_ = FrameZone::Outside;
    bool dragBegun_ = false;
    bool managerTakesIt_ = false;       // whether the window manager would carry it out
    std::optional<EdgeRect> heldBack_;  // proposed last, and left to the window manager
    ManagerDrag* managerDrag_ = nullptr;
    QPoint pressedAt_;  // on the screen
    EdgeRect rectAtPress_;
};

}  // namespace pixelgrove
