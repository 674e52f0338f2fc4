#include "ui/Menus.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <iterator>

#include "core/Commands.h"
#include "core/Stages.h"

namespace pixelgrove {

namespace {

// GL_RGB16F stands on the menu and is not accepted: it can't be counted on as a colour target.
constexpr FrameBufferFormatRow kFormats[] = {
    {115, "GL_RGBA8", 0x8058, true},         {116, "GL_RGB8", 0x8051, true},
    {117, "GL_RGBA16F", 0x881A, true},       {118, "GL_RGB16F", 0x881B, false},
    {119, "GL_RGBA16", 0x805B, true},        {120, "GL_RGB16", 0x8054, true},
    {121, "GL_RGBA32F", gl::kRgba32f, true},
};

const char* const kMultisampleTexts[] = {"None", "2x", "4x", "8x", "16x", "32x"};

constexpr int kEditCommands[] = {kCmdEditUndo,  kCmdEditCut,    kCmdEditCopy,
                                 kCmdEditPaste, kCmdEditDelete, kCmdEditSelectAll};

}  // namespace

const FrameBufferFormatRow* FindFrameBufferFormat(int commandId) {
    const auto* row = std::ranges::find(kFormats, commandId, &FrameBufferFormatRow::commandId);
    return row == std::end(kFormats) ? nullptr : row;
}

const FrameBufferFormatRow* FindFrameBufferFormatOf(uint32_t format) {
    const auto* row = std::ranges::find(kFormats, format, &FrameBufferFormatRow::format);
    return row == std::end(kFormats) ? nullptr : row;
}

Menus::Menus(QMainWindow& window, std::function<void(int commandId)> runCommand) {
    auto add = [&](QMenu* menu, int id, const QString& text, const QKeySequence& keys = {}) {
        QAction* action = menu->addAction(text);
        action->setData(id);
        action->setShortcut(keys);
        QObject::connect(action, &QAction::triggered, &window, [runCommand, id] { runCommand(id); });
        // The editing keys act where the focus is: the message pane and the fields have their own.
        if (std::ranges::find(kEditCommands, id) != std::end(kEditCommands)) {
            action->setShortcutContext(Qt::WidgetShortcut);
        }
        actions_[id] = action;
        return action;
    };
    auto addTick = [&](QMenu* menu, int id, const QString& text, bool ticked = false) {
        QAction* action = add(menu, id, text);
        action->setCheckable(true);
        action->setChecked(ticked);
    };

    QMenu* file = window.menuBar()->addMenu(QStringLiteral("&FIle"));
    add(file, kCmdNew, QStringLiteral("&New"));
    add(file, kCmdOpenProject, QStringLiteral("Open Project..."));
    add(file, kCmdSaveProjectAs, QStringLiteral("&Save Project As"));
    file->addSeparator();
    add(file, kCmdCancel, QStringLiteral("E&xit"));

    QMenu* edit = window.menuBar()->addMenu(QStringLiteral("&Edit"));
    add(edit, kCmdEditUndo, QStringLiteral("Undo"), QKeySequence::Undo);
    edit->addSeparator();
    add(edit, kCmdEditCut, QStringLiteral("Cut"), QKeySequence::Cut);
    add(edit, kCmdEditCopy, QStringLiteral("Copy"), QKeySequence::Copy);
    add(edit, kCmdEditPaste, QStringLiteral("Paste"), QKeySequence::Paste);
    add(edit, kCmdEditDelete, QStringLiteral("Delete"));
    edit->addSeparator();
    add(edit, kCmdEditSelectAll, QStringLiteral("Select All"), QKeySequence::SelectAll);
    edit->addSeparator();
    QMenu* formats = edit->addMenu(QStringLiteral("Frame Buffer Format"));
    for (const FrameBufferFormatRow& row : kFormats)
        addTick(formats, row.commandId, QString::fromLatin1(row.text), row.format == gl::kRgba32f);
    addTick(edit, kCmdUseGdiDisplay, QStringLiteral("Use GDI for display"));
    QMenu* samples = edit->addMenu(QStringLiteral("Multisample"));
    for (int id = kCmdMultisampleFirst; id <= kCmdMultisampleLast; ++id)
        addTick(samples, id, QString::fromLatin1(kMultisampleTexts[id - kCmdMultisampleFirst]),
                id == kCmdMultisampleFirst);

    QMenu* windows = window.menuBar()->addMenu(QStringLiteral("&Windows"));
    addTick(windows, kCmdAnimationWindow, QStringLiteral("Animation Window"));
}

QAction* Menus::Action(int commandId) const {
    const auto found = actions_.find(commandId);
    return found == actions_.end() ? nullptr : found->second;
}

void Menus::SetTick(int commandId, bool ticked) {
    if (QAction* action = Action(commandId)) action->setChecked(ticked);
}

QList<QAction*> Menus::EditActions() const {
    QList<QAction*> actions;
    for (int id : kEditCommands)
        actions.append(Action(id));
    return actions;
}

}  // namespace pixelgrove
