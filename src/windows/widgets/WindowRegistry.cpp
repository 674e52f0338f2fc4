#include "windows/widgets/WindowRegistry.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "windows/LayoutRules.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/ScreenAreas.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

// Frames have no border beyond what is seen of them, so windows that share an edge touch.
constexpr int kHiddenBorder = 0;

// What a file says, as a place where the user finds the window.
EdgeRect PlaceInSight(const FrameWindow& window, const WindowRecord& row) {
    return BroughtIntoSight(row.placement.normal, window.SmallestFrame(), AllWorkAreas());
}

void Recover(WindowLayout& layout) {
    const std::optional<EdgeRect> desktop = CurrentDesktop();
    if (!desktop || layout.desktop == *desktop) return;
    RecoverRows(layout.windows, CurrentWorkArea());
    LeaveRoomToDrag(layout.windows, CurrentWorkArea());
    layout.desktop = *desktop;
}

}  // namespace

std::optional<EdgeRect> CurrentDesktop() {
    std::vector<EdgeRect> monitors;
    for (const QScreen* screen : QGuiApplication::screens())
        monitors.push_back(FromQRect(screen->geometry()));
    return DesktopRect(monitors);
}

EdgeRect CurrentWorkArea() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? WorkAreaOf(*screen) : EdgeRect{};
}

WindowRegistry& Windows() {
    static WindowRegistry registry;
    return registry;
}

void WindowRegistry::RegisterDefaultWindows() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const EdgeRect whole = FromQRect(screen->geometry());
    WindowLayout& layout = Layout();
    layout.desktop = CurrentDesktop().value_or(EdgeRect{});
    layout.windows = DefaultWindowRows(CurrentWorkArea(), whole.Width() * whole.Height(), kHiddenBorder);
    layout.lockWindows = false;
    openStatesFrozen_ = false;
}

void WindowRegistry::RecoverStoredRows() {
    Recover(Layout());
}

void WindowRegistry::Clear() {
    Layout() = WindowLayout();
    named_.clear();
    snap_ = SnapState();
    drag_ = WindowDrag();
    lastProposal_.reset();
    alignmentDue_ = false;
    openStatesFrozen_ = false;
}

void WindowRegistry::Present(FrameWindow& window, QStringView name) {
    named_[name.toString()] = &window;
    WindowRecord* row = FindOrAddWindowRow(Layout().windows, name);
    if (!row) {
        window.show();
        return;
    }
    row->window = WindowPresence::Present;
    row->open = true;
    row->live = false;  // what the frame reports while it appears is not the user's doing
    if (row->placement.IsValid()) window.SetFrameRect(PlaceInSight(window, *row));
    window.show();
    // Showing may have handled events, and with them anything.
    row = RowOf(window);
    if (!row) return;
    row->live = true;
    row->placement = window.Placement();
}

FrameWindow* WindowRegistry::Find(QStringView name) const {
    return named_.value(name.toString());
}

void WindowRegistry::Forget(const FrameWindow& window) {
    if (WindowRecord* row = RowOf(window)) {
        row->window = WindowPresence::None;
        row->live = false;
    }
    named_.removeIf([&window](const auto& entry) { return !entry.value() || entry.value() == &window; });
}

WindowRecord* WindowRegistry::RowOf(const FrameWindow& window) {
    for (auto it = named_.cbegin(); it != named_.cend(); ++it)
        if (it.value() == &window) return FindWindowRow(Layout().windows, it.key());
    return nullptr;
}

void WindowRegistry::Place(FrameWindow& window, const WindowRecord& row) {
    const EdgeRect rect = PlaceInSight(window, row);
    window.SetMaximised(false);
    if (window.FrameRect() != rect) window.SetFrameRect(rect);
}

void WindowRegistry::ReadPlacements() {
    for (const QPointer<FrameWindow>& window : named_) {
        WindowRecord* row = window ? RowOf(*window) : nullptr;
        if (row && row->live) row->placement = window->Placement();
    }
}

void WindowRegistry::ApplyLayout(const QStringList& names,
                                 const std::function<void(const QString& name)>& openWindow) {
    const bool lock = std::exchange(Layout().lockWindows, false);
    for (const QString& name : names) {
        WindowRecord* row = FindOrAddWindowRow(Layout().windows, name);
        if (!row) continue;
        FrameWindow* window = Find(name);
        // The program ends with its main window, which no layout is to do.
        if (name == QStringView(kEditWin)) row->open = true;
        switch (ActionToApply(*row, window != nullptr)) {
            case LayoutAction::Nothing:
                break;
            case LayoutAction::Open:
                if (openWindow) openWindow(name);
                break;
            case LayoutAction::Close:
                window->close();
                break;
            case LayoutAction::Place:
                row->live = false;
                Place(*window, *row);
                window->show();
                row->live = true;
                break;
            case LayoutAction::Show:
                window->show();
                row->live = true;
                break;
        }
    }
    Layout().lockWindows = lock;
}

bool WindowRegistry::SaveLayoutFile(const QString& path) {
    const std::optional<EdgeRect> desktop = CurrentDesktop();
    const std::unique_ptr<XmlStore> store = desktop ? XmlCreate() : nullptr;
    if (!store) return false;
    ReadPlacements();
    Layout().desktop = *desktop;
    return SaveLayout(*store, Layout()) && XmlSave(*store, path);
}

bool WindowRegistry::LoadLayoutFile(const QString& path) {
    const std::unique_ptr<XmlStore> store = XmlLoad(path);
    if (!store) return false;
    WindowLayout inFile;
    LoadLayout(*store, inFile);
    if (inFile.windows.empty()) return false;
    const bool lock = Layout().lockWindows;
    LoadLayout(*store, Layout());
    Layout().lockWindows = lock;
    Recover(Layout());
    return true;
}

bool WindowRegistry::LockWindows() const {
    return layout_.lockWindows;
}

void WindowRegistry::SetLockWindows(bool lock) {
    Layout().lockWindows = lock;
}

void WindowRegistry::AddFrame(FrameWindow& window) {
    if (!frames_.contains(&window)) frames_.append(&window);
}

void WindowRegistry::RemoveFrame(FrameWindow& window) {
    Forget(window);
    frames_.removeAll(&window);
}

void WindowRegistry::BeginDrag(FrameWindow&, bool leftShift) {
    ReadPlacements();
    drag_ = pixelgrove::BeginDrag(Layout().windows, snap_, Layout().lockWindows, leftShift);
    ledByManager_ = nullptr;
    lastProposal_.reset();
    alignmentDue_ = false;
}

bool WindowRegistry::IsPlainDrag(const FrameWindow& window, FrameZone zone, bool leftShift) {
    if (zone == FrameZone::Caption && snap_.active) return false;
    return !RowOf(window) || !MovesAsGroup(Layout().lockWindows, leftShift);
}

void WindowRegistry::LeaveDragToManager(FrameWindow& window, FrameZone zone) {
    ledByManager_ = &window;
    zone_ = zone;
    lastProposal_.reset();
}

// False when the group doesn't act. A window that the manager leads is where the manager put it.
bool WindowRegistry::MoveGroup(FrameWindow& dragged, const EdgeRect& proposed, bool leftShift) {
    WindowRows& rows = Layout().windows;
    const WindowRecord* row = RowOf(dragged);
    const std::vector<RowMove> moves =
        ProposeGroupMove(rows, drag_, row ? size_t(row - rows.data()) : rows.size(), proposed,
                         Layout().lockWindows, leftShift);
    for (const RowMove& move : moves) {
        FrameWindow* member = Find(rows[move.row].name);
        if (member && member != ledByManager_ && !member->IsMaximised()) member->SetFrameRect(move.rect);
    }
    return !moves.empty();
}

std::vector<EdgeRect> WindowRegistry::SnapTargets(const FrameWindow& window) const {
    std::vector<EdgeRect> others;
    for (const FrameWindow* other : frames_)
        if (other != &window && other->isVisible() && !other->isMinimized())
            others.push_back(other->FrameRect());
    return others;
}

void WindowRegistry::DragTo(FrameWindow& window, FrameZone zone, const EdgeRect& proposed, bool leftShift) {
    ledByManager_ = nullptr;
    lastProposal_.reset();
    if (MoveGroup(window, proposed, leftShift)) return;
    zone_ = zone;
    lastProposal_ = proposed;
    EdgeRect rect = proposed;
    if (zone == FrameZone::Caption)
        rect = SnapMoveStep(snap_, proposed, SnapTargets(window)).value_or(proposed);
    window.SetFrameRect(rect);
}

void WindowRegistry::EndDrag(FrameWindow& window) {
    // The last step need not have been one of those that are snapped, and a late report of a place that was
    // only passed may stand for the window's.
    if (snap_.active && lastProposal_) {
        window.SetFrameRect(zone_ == FrameZone::Caption
                                ? SnapRect(*lastProposal_, SnapTargets(window), snap_.distance)
                                : *lastProposal_);
    }
    pixelgrove::EndDrag(drag_, snap_);
    ledByManager_ = nullptr;
    ReadPlacements();
    alignmentDue_ = snap_.active;
    NoteSettled();
}

// Edges are aligned where the windows are, which isn't where a window manager refused to put them.
void WindowRegistry::NoteSettled() {
    const bool settled = std::all_of(frames_.begin(), frames_.end(),
                                     [](const FrameWindow* frame) { return frame->IsSettled(); });
    if (!settled || !std::exchange(alignmentDue_, false)) return;
    ReadPlacements();
    AlignEdges(Layout().windows);
    for (const WindowRecord& row : Layout().windows) {
        FrameWindow* window = Find(row.name);
        if (window && row.live && row.open && !window->IsMaximised()) Place(*window, row);
    }
}

void WindowRegistry::NoteMoved(FrameWindow& window) {
    if (drag_.inProgress) {
        if (&window != ledByManager_) return;
        const bool alone = !MoveGroup(window, window.FrameRect(), IsLeftShiftDown());
        lastProposal_ =
            zone_ == FrameZone::Caption && alone ? std::optional(window.FrameRect()) : std::nullopt;
        return;
    }
    WindowRecord* row = RowOf(window);
    if (row && row->live) row->placement = window.Placement();
}

void WindowRegistry::NoteClosed(FrameWindow& window) {
    WindowRecord* row = RowOf(window);
    if (row && !openStatesFrozen_ && row->name != QStringView(kEditWin)) row->open = false;
    // The next window of its name may come before it is gone.
    if (window.testAttribute(Qt::WA_DeleteOnClose)) Forget(window);
}

}  // namespace pixelgrove
