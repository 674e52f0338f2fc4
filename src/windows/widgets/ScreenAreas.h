// The part of each screen that panels leave to windows, in logical pixels. The toolkit knows it only while
// there is one screen; with more, the window manager is asked, or else the panels themselves. Each call asks
// anew. Main thread, with an application.
#pragma once

#include <vector>

#include "windows/EdgeRect.h"

class QScreen;

namespace pixelgrove {

EdgeRect WorkAreaOf(const QScreen& screen);

// Of all screens, in the toolkit's order.
std::vector<EdgeRect> AllWorkAreas();

// That of the screen that most of the rectangle is on, else of the fallback; empty without both.
EdgeRect WorkAreaAround(const EdgeRect& rect, const QScreen* fallback);

}  // namespace pixelgrove
