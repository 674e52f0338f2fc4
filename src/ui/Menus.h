// The main window's menus: every entry carries the id of its command and runs it through the window. The one
// home of the menu texts. Main thread.
#pragma once

#include <QAction>
#include <functional>
#include <map>

class QMainWindow;

namespace pixelgrove {

class Menus {
  public:
    // Builds the menus into the window's menu bar; runCommand is called with the entry's id.
    Menus(QMainWindow& window, std::function<void(int commandId)> runCommand);

    QAction* Action(int commandId) const;
    void SetTick(int commandId, bool ticked);
    // The entries of the editor's context menu.
    QList<QAction*> EditActions() const;

  private:
    std::map<int, QAction*> actions_;
};

// A frame buffer format as the menu offers it.
struct FrameBufferFormatRow {
    int commandId;
    const char* text;
    uint32_t format;  // GL internal format
    bool isAccepted;  // choosing it changes the format
};
// Ids kCmdFrameBufferFormatFirst to kCmdFrameBufferFormatLast in order; null for another id.
const FrameBufferFormatRow* FindFrameBufferFormat(int commandId);
// The entry of a format; null when the menu has none.
const FrameBufferFormatRow* FindFrameBufferFormatOf(uint32_t format);

}  // namespace pixelgrove
