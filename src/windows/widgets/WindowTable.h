// WindowTable: the program's windows beside the main one, a row each. The commands that open and close them,
// their ticks in the menu, layouts and the end of the program all go by these rows.
//
// To add a window: derive it from FrameWindow; in a file beside it write a function that adds its row here
// and hands on what the window needs; call that function where the main window fills its table.
//
// Owned by the main window; main thread.
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace pixelgrove {

class CommandRegistry;
class FrameWindow;

struct WindowTableRow {
    QString name;       // of its row in layouts
    int commandId = 0;  // opens the window, or closes the one that is there
    // A new window, not shown yet, that deletes itself once it is closed. The table shows it.
    std::function<FrameWindow*()> make;
};

class WindowTable {
  public:
    WindowTable() = default;
    // Deletes the windows that are open, without the close that a user would see.
    ~WindowTable();
    WindowTable(const WindowTable&) = delete;
    WindowTable& operator=(const WindowTable&) = delete;

    // Each name and each command once; the command is the registry's from now on. This object outlives it.
    void Add(WindowTableRow row, CommandRegistry& commands);

    // Told whenever a window has come or gone; may be empty.
    std::function<void()> onChange;

    // Closes what is open, as the user does.
    void CloseAll();

    // Brings all windows, the main one first, in line with the rows of the layout. When some are to be opened
    // calls openLater, after which OpenMissing is due. The rows of windows that the program lacks stay as
    // they are.
    void ApplyLayout(const std::function<void()>& openLater) const;
    // Opens the windows that the layout has open and that aren't there, in the order of the calls of Add.
    void OpenMissing();

  private:
    void Open(const WindowTableRow& row);
    void Toggle(const WindowTableRow& row);

    std::vector<WindowTableRow> rows_;
};

}  // namespace pixelgrove
