// FrameFocus: who has the keyboard when a frame comes, goes or is pressed. With a window manager that is the
// manager's business, but for windows that are to appear without taking it.
//
// Each frame owns one. Main thread.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>

namespace pixelgrove {

class FrameFocus {
  public:
    // The frame owns it.
    explicit FrameFocus(QWidget& frame) : frame_(frame) {}

    // From now on the frame is shown without taking the focus or the user's attention, and the other window
    // keeps the focus.
    void LeaveTo(QWidget& other);
    // Where no window manager does it: the frame comes to the front with its dialogs above it, and gets the
    // focus.
    void TakeAlone();
    // Where no window manager does it: the frame goes, and its owner or another frame gets the focus, unless
    // a window has it.
    void PassOn();

    // What the frame hears of itself.
    void NoteShown();
    void NoteActivation();

  private:
    QWidget& frame_;
    QPointer<QWidget> keeper_;
    QElapsedTimer sinceQuietShow_;
};

}  // namespace pixelgrove
