// What only the X server can tell: whether a window manager runs, and the left Shift key.
//
// Both ask the server at each call, over the toolkit's connection, so that an answer is never stale. Main
// thread, with an application.
#pragma once

namespace pixelgrove {

// Whether one runs that minimises windows and gives them the focus. True also on other platforms than X11.
bool HasWindowManager();

// Whether the left one of the Shift keys is down now; on other platforms than X11 either of them.
bool IsLeftShiftDown();

}  // namespace pixelgrove
