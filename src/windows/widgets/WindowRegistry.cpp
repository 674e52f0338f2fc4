#include "windows/widgets/WindowRegistry.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "persist/SettingsRecords.h"
#include "windows/LayoutRules.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/ScreenAreas.h"

namespace pixelgrove {

namespace {

// The windows that a layout opens and closes, in its order.
constexpr const char16_t* kLayoutWindows[] = {kEditWin, kOutputWin, kShadertoyWin, kAudioConfigWin};

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

WindowLayout& WindowRegistry::Layout() const {
    return StoredSettings().layout;
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

FrameWindow* WindowRegistry::WindowOf(QStringView name) const {
    return named_.value(name.toString());
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

void WindowRegistry::ApplyLayout(const std::function<void(const QString& name)>& openWindow) {
    const bool lock = std::exchange(Layout().lockWindows, false);
    for (const char16_t* name : kLayoutWindows) {
        const QString windowName = QString::fromUtf16(name);
        WindowRecord* row = FindOrAddWindowRow(Layout().windows, windowName);
        if (!row) continue;
        FrameWindow* window = WindowOf(windowName);
        // The program ends with its main window, which no layout is to do.
        if (windowName == QStringView(kEditWin)) row->open = true;
        switch (ActionToApply(*row, window != nullptr)) {
            case LayoutAction::Nothing:
                break;
            case LayoutAction::Open:
                if (openWindow) openWindow(windowName);
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
    return Layout().lockWindows;
}

void WindowRegistry::SetLockWindows(bool lock) {
    Layout().lockWindows = lock;
}

void WindowRegistry::AddFrame(FrameWindow& window) {
    if (!frames_.contains(&window)) frames_.append(&window);
}

void WindowRegistry::RemoveFrame(FrameWindow& window) {
    if (WindowRecord* row = RowOf(window)) {
        row->window = WindowPresence::None;
        row->live = false;
    }
    named_.removeIf([&window](const auto& entry) { return !entry.value() || entry.value() == &window; });
    frames_.removeAll(&window);
}

void WindowRegistry::BeginDrag(FrameWindow&, bool leftShift) {
    ReadPlacements();
    drag_ = pixelgrove::BeginDrag(Layout().windows, snap_, Layout().lockWindows, leftShift);
}

void WindowRegistry::DragTo(FrameWindow& window, FrameZone zone, const EdgeRect& proposed, bool leftShift) {
    WindowRows& rows = Layout().windows;
    const WindowRecord* row = RowOf(window);
    const size_t dragged = row ? size_t(row - rows.data()) : rows.size();
    const std::vector<RowMove> moves =
        ProposeGroupMove(rows, drag_, dragged, proposed, Layout().lockWindows, leftShift);
    for (const RowMove& move : moves) {
        FrameWindow* member = WindowOf(rows[move.row].name);
        if (member && !member->IsMaximised()) member->SetFrameRect(move.rect);
    }
    if (!moves.empty()) return;

    EdgeRect rect = proposed;
    if (zone == FrameZone::Caption) {
        std::vector<EdgeRect> others;
        for (const FrameWindow* other : frames_)
            if (other != &window && other->isVisible() && !other->isMinimized())
                others.push_back(other->FrameRect());
        rect = SnapMoveStep(snap_, proposed, others).value_or(proposed);
    }
    window.SetFrameRect(rect);
}

void WindowRegistry::EndDrag(FrameWindow&) {
    pixelgrove::EndDrag(drag_, snap_);
    ReadPlacements();
    if (!snap_.active) return;
    AlignEdges(Layout().windows);
    for (const WindowRecord& row : Layout().windows) {
        FrameWindow* window = WindowOf(row.name);
        if (window && row.live && row.open && !window->IsMaximised()) Place(*window, row);
    }
}

void WindowRegistry::NoteMoved(FrameWindow& window) {
    WindowRecord* row = RowOf(window);
    if (row && row->live && !drag_.inProgress) row->placement = window.Placement();
}

void WindowRegistry::NoteClosed(FrameWindow& window) {
    WindowRecord* row = RowOf(window);
    if (row && !openStatesFrozen_ && row->name != QStringView(kEditWin)) row->open = false;
}

}  // namespace pixelgrove
