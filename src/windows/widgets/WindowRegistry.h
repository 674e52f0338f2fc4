// WindowRegistry: knows every top-level window of the program: the named ones with their rows in the stored
// layout, and all frames for snapping. Carries out drags, and brings the windows in line with a layout.
//
// One for the whole process, reached by Windows(). Main thread.
#pragma once

#include <QHash>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "windows/FrameGeometry.h"
#include "windows/GroupMoves.h"
#include "windows/Snapping.h"
#include "windows/WindowLayout.h"

namespace pixelgrove {

class FrameWindow;

class WindowRegistry {
  public:
    // The rows, as the settings file and layout files store them. A row is valid until one is added.
    WindowLayout& Layout() { return layout_; }

    // Start-up, before the settings are read: the rows of the default windows, by the primary screen.
    void RegisterDefaultWindows();
    // After the settings were read: rows that were stored on another desktop are brought onto this one.
    void RecoverStoredRows();
    // The last step of the program: no rows, no drag, snapping off. Frames that live are known on.
    void Clear();

    // The name's row is that of the window from now on: it is shown where the row says, or where the
    // platform puts it, and its row is open and live. The row is made if it is missing.
    void Present(FrameWindow& window, QStringView name);
    // The window that was presented under that name and is still there. One that deletes itself once it is
    // closed isn't from its close on.
    FrameWindow* Find(QStringView name) const;
    // The row of a presented window; null for others.
    WindowRecord* RowOf(const FrameWindow& window);

    // The whole set is going: from now on closing a window doesn't mark it as closed.
    void FreezeOpenStates() { openStatesFrozen_ = true; }

    // In the order of the names, and the rows of no other windows count: makes open windows close, closed
    // ones open, and moves the rest to where their rows say. openWindow is asked to open the window of a
    // name; the main window (EditWin) is never closed by a layout. Windows don't move as a group meanwhile.
    void ApplyLayout(const QStringList& names, const std::function<void(const QString& name)>& openWindow);

    // The file takes the layout as it is, replaced whole or not at all. False on failure.
    bool SaveLayoutFile(const QString& path);
    // The rows take what the file says, brought onto this desktop; whether windows move together stays as it
    // is. False, with no change, when the file can't be read. ApplyLayout is the caller's.
    bool LoadLayoutFile(const QString& path);

    bool LockWindows() const;
    void SetLockWindows(bool lock);
    void SetSnapping(bool active) { snap_.active = active; }
    bool IsSnapping() const { return snap_.active; }

    // What frames report. A drag is one BeginDrag, any number of DragTo, one EndDrag. From some point on the
    // window manager may lead the window: best when the drag is plain, that is when it neither snaps nor
    // takes other windows along. Of one that isn't, the others follow where the manager led, and the window
    // snaps at the end.
    void AddFrame(FrameWindow& window);
    void RemoveFrame(FrameWindow& window);
    void BeginDrag(FrameWindow& window, bool leftShift);
    // Puts the window, with its group or snapped, where the proposal leads to.
    void DragTo(FrameWindow& window, FrameZone zone, const EdgeRect& proposed, bool leftShift);
    bool IsPlainDrag(const FrameWindow& window, FrameZone zone, bool leftShift);
    void LeaveDragToManager(FrameWindow& window, FrameZone zone);
    void EndDrag(FrameWindow& window);
    void NoteMoved(FrameWindow& window);
    void NoteClosed(FrameWindow& window);
    void NoteSettled();

  private:
    void Forget(const FrameWindow& window);
    void ReadPlacements();
    void Place(FrameWindow& window, const WindowRecord& row);
    bool MoveGroup(FrameWindow& dragged, const EdgeRect& proposed, bool leftShift);
    std::vector<EdgeRect> SnapTargets(const FrameWindow& window) const;

    WindowLayout layout_;
    QList<FrameWindow*> frames_;
    QHash<QString, QPointer<FrameWindow>> named_;
    SnapState snap_;
    WindowDrag drag_;
    FrameZone zone_ = FrameZone::Outside;        // of the last proposal
    const FrameWindow* ledByManager_ = nullptr;  // in the drag in progress
    std::optional<EdgeRect> lastProposal_;       // as long as the window goes alone
    bool alignmentDue_ = false;  // once all windows are where they were asked to go, or refused to
    bool openStatesFrozen_ = false;
};

WindowRegistry& Windows();

// The union of all monitors, and the work area of the primary one, both in logical pixels; nothing without a
// monitor.
std::optional<EdgeRect> CurrentDesktop();
EdgeRect CurrentWorkArea();

}  // namespace pixelgrove
