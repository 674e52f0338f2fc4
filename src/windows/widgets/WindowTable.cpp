#include "windows/widgets/WindowTable.h"

#include <QStringList>
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
        row.commandId, [this, index = rows_.size()] { Toggle(rows_[index]); },
        [name = row.name] { return Windows().Find(name) != nullptr; });
    if (isNew) rows_.push_back(std::move(row));
}

void WindowTable::Toggle(const WindowTableRow& row) {
    if (FrameWindow* window = Windows().Find(row.name))
        window->close();
    else
        Open(row);
}

void WindowTable::Open(const WindowTableRow& row) {
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

void WindowTable::ApplyLayout(const std::function<void()>& openLater) const {
    QStringList names{QString::fromUtf16(kEditWin)};
    for (const WindowTableRow& row : rows_)
        names.append(row.name);
    bool isOneMissing = false;
    Windows().ApplyLayout(names, [&isOneMissing](const QString& name) {
        if (name != QStringView(kEditWin)) isOneMissing = true;
    });
    if (isOneMissing) openLater();
}

void WindowTable::OpenMissing() {
    for (const WindowTableRow& row : rows_) {
        const WindowRecord* stored = FindWindowRow(Windows().Layout().windows, row.name);
        if (stored && stored->open && !Windows().Find(row.name)) Open(row);
    }
}

}  // namespace pixelgrove
