// Shortcuts for keyboards on which no layout has Latin letters: there a key stands for the letter that a US
// keyboard has in its place. The toolkit finds the letter by itself while at least one layout has it.
//
// Main thread, with an application.
#pragma once

#include <QObject>
#include <functional>

namespace pixelgrove {

// The key in the place of that scan code, as X11 counts on Linux; 0 for others than letters and the marks
// around them.
int UsKeyAt(quint32 scanCode);

// Whether each Latin letter is on the keyboard, in whatever layout. Asks the server; true on other platforms.
bool KeyboardHasLatin();

// Sees the keys of all windows from when it is made: a letter that isn't Latin, pressed with Ctrl, Alt or
// Meta, arrives as the one in its place when hasLatin says no.
class KeyPositions : public QObject {
  public:
    explicit KeyPositions(QObject* parent, std::function<bool()> hasLatin = KeyboardHasLatin);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::function<bool()> hasLatin_;
};

}  // namespace pixelgrove
