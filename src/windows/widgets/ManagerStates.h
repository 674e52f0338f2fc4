// The states of windows that the window manager keeps: it is asked to change them. Whether and when it does
// is told by the window's own state. Nothing happens on other platforms than X11. Main thread, with an
// application.
#pragma once

class QWidget;

namespace pixelgrove {

// Whether a window manager runs that maximises windows. Those that tile them don't.
bool ManagerMaximises();

void AskForMaximised(const QWidget& window, bool maximised);
void AskForMinimised(const QWidget& window);

// For a window that was just shown without the focus. Some managers take it as one whose wish for the focus
// was refused and mark it as demanding attention; they are asked to take the mark off.
void WithdrawAttention(const QWidget& window);

}  // namespace pixelgrove
