// What only the X server can tell: what the window manager does, whether a key or button is down, and where
// windows are.
//
// Questions go to the server at each call, over the toolkit's connection, so that an answer is never stale.
// Main thread, with an application.
#pragma once

#include <QPoint>
#include <functional>

class QWidget;

namespace pixelgrove {

// Whether one runs that minimises windows and gives them the focus. True also on other platforms than X11.
bool HasWindowManager();

// Whether one runs that carries drags out itself. False on other platforms than X11.
bool ManagerTakesDrags();

// Asks the window manager to carry out the left button's drag as from the point on the screen: to size the
// window by the edges, or without any to move it. False when it can't be asked.
bool StartManagerDrag(const QWidget& window, Qt::Edges edges, const QPoint& from);

// The window manager leaves such a drag, also when it hasn't begun yet, with the window where the drag began
// or where it is. Nothing on other platforms.
void CancelManagerDrag(const QWidget& window);

// Whether the left one of the Shift keys is down now; on other platforms than X11 either of them.
bool IsLeftShiftDown();

// Whether the left mouse button is down now, wherever the pointer is.
bool IsLeftButtonDown();

// Whether the server is itself a client of a Wayland compositor. The pointer's place on the screen is then
// made up from its place in a window and the window's, which don't fit together while the window moves.
bool IsXwayland();

// From now on "told" is called with each top-level window of the program that the server or the window
// manager has told the place of, once the toolkit has taken the report up. Nothing on other platforms.
void WatchReports(std::function<void(QWidget& window)> told);

// Has the server's word for where the window is reported as if the window manager had told it. False, and no
// report comes, on other platforms, and when the server doesn't know the window.
bool InquireReport(const QWidget& window);

}  // namespace pixelgrove
