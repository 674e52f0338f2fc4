#include "windows/widgets/WindowTable.h"

#include <algorithm>
#include <utility>

#include "commands/CommandRegistry.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

WindowTable::~WindowTable() {
    onChange = nullptr;
    for (const Entry& entry : entries_)
        delete entry.window;
}

void WindowTable::Add(WindowTableRow row, CommandRegistry& commands) {
    const QString name = row.name;
    const bool isNew = commands.AddToggle(
        row.commandId, [this, name] { Toggle(name); }, [this, name] { return Find(name) != nullptr; });
    if (isNew) entries_.push_back({std::move(row), nullptr});
}

const WindowTable::Entry* WindowTable::EntryOf(QStringView name) const {
    const auto isThat = [name](const Entry& entry) { return entry.row.name == name; };
    const auto entry = std::ranges::find_if(entries_, isThat);
    return entry == entries_.end() ? nullptr : &*entry;
}

WindowTable::Entry* WindowTable::EntryOf(QStringView name) {
    return const_cast<Entry*>(std::as_const(*this).EntryOf(name));
}

FrameWindow* WindowTable::Find(QStringView name) const {
    const Entry* entry = EntryOf(name);
    return entry ? entry->window.data() : nullptr;
}

void WindowTable::Toggle(QStringView name) {
    Entry& entry = *EntryOf(name);
    if (entry.window) {
        entry.window->close();
        return;
    }
    FrameWindow* window = entry.row.make();
    entry.window = window;
    // Closed, it may live on for a while.
    const auto gone = [this, window, row = entry.row.name] {
        Entry* closed = EntryOf(row);
        if (closed->window == window) closed->window = nullptr;
        if (onChange) onChange();
    };
    QObject::connect(window, &FrameWindow::CloseAccepted, window, gone);
    if (onChange) onChange();
    Windows().Present(*window, name);
}

void WindowTable::CloseAll() {
    for (const Entry& entry : entries_)
        if (entry.window) entry.window->close();
}

void WindowTable::ApplyLayout(const std::function<void(int commandId)>& openWindow) const {
    Windows().ApplyLayout([this, &openWindow](const QString& name) {
        if (const Entry* entry = EntryOf(name)) openWindow(entry->row.commandId);
    });
}

}  // namespace pixelgrove
