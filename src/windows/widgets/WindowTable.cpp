#include "windows/widgets/WindowTable.h"

#include <QStringList>
#include <algorithm>
#include <utility>

#include "commands/CommandRegistry.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

WindowTable::~WindowTable() {
    onChange = nullptr;
    for (const WindowTableRow& row : rows_)
        delete Windows().Find(row.name);
}

void WindowTable::Add(WindowTableRow row, CommandRegistry& commands) {
    const bool isNew = commands.AddToggle(
        row.commandId, [this, index = rows_.size()] { Toggle(index); },
        [name = row.name] { return Windows().Find(name) != nullptr; });
    if (isNew) rows_.push_back(std::move(row));
}

void WindowTable::Toggle(size_t index) {
    const WindowTableRow& row = rows_[index];
    if (FrameWindow* window = Windows().Find(row.name)) {
        window->close();
        return;
    }
    FrameWindow* window = row.make();
    QObject::connect(window, &FrameWindow::Closed, window, [this] {
        if (onChange) onChange();
    });
    Windows().Present(*window, row.name);
    if (onChange) onChange();
}

void WindowTable::CloseAll() {
    for (const WindowTableRow& row : rows_)
        if (FrameWindow* window = Windows().Find(row.name)) window->close();
}

void WindowTable::ApplyLayout(const std::function<void(int commandId)>& openWindow) const {
    QStringList names{QString::fromUtf16(kEditWin)};
    for (const WindowTableRow& row : rows_)
        names.append(row.name);
    Windows().ApplyLayout(names, [this, &openWindow](const QString& name) {
        const auto row = std::ranges::find(rows_, name, &WindowTableRow::name);
        if (row != rows_.end()) openWindow(row->commandId);
    });
}

}  // namespace pixelgrove
