#include "ui/Menus.h"

#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <iterator>

#include "commands/Commands.h"
#include "commands/MenuTable.h"
#include "core/AppState.h"
#include "ui/RecentMenus.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

namespace {

// GL_RGB16F stands on the menu and is not accepted: it can't be counted on as a colour target.
constexpr FrameBufferFormatRow kFormats[] = {
    {115, 0x8058, true}, {116, 0x8051, true}, {117, 0x881A, true},       {118, 0x881B, false},
    {119, 0x805B, true}, {120, 0x8054, true}, {121, gl::kRgba32f, true},
};

constexpr int kEditCommands[] = {kCmdEditUndo,  kCmdEditRedo,   kCmdEditCut,      kCmdEditCopy,
                                 kCmdEditPaste, kCmdEditDelete, kCmdEditSelectAll};

constexpr int kUnavailable[] = {
    kCmdRecord,  kCmdInsertDefines,     kCmdLoadDefines, kCmdCreateControl,    kCmdAbout,
    kCmdLicense, kCmdRecordingSettings, kCmdLoadPalette, kCmdShadertoyBrowser, kCmdAudioConfiguration,
};

template <size_t N>
bool Contains(const int (&ids)[N], int id) {
    return std::ranges::find(ids, id) != std::end(ids);
}

// The menu of that label among the actions and below them.
QMenu* FindMenu(const QList<QAction*>& actions, const QString& label) {
    for (const QAction* action : actions) {
        QMenu* menu = action->menu();
        if (!menu) continue;
        if (action->text() == label) return menu;
        if (QMenu* deeper = FindMenu(menu->actions(), label)) return deeper;
    }
    return nullptr;
}

}  // namespace

bool IsCommandAvailable(int commandId) {
    const int palette = commandId - kCmdRecentPaletteFirst;
    return !Contains(kUnavailable, commandId) && (palette < 0 || palette >= StringList::kCapacity);
}

QString MenuText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

const FrameBufferFormatRow* FindFrameBufferFormat(int commandId) {
    const auto* row = std::ranges::find(kFormats, commandId, &FrameBufferFormatRow::commandId);
    return row == std::end(kFormats) ? nullptr : row;
}

const FrameBufferFormatRow* FindFrameBufferFormatOf(uint32_t format) {
    const auto* row = std::ranges::find(kFormats, format, &FrameBufferFormatRow::format);
    return row == std::end(kFormats) ? nullptr : row;
}

Menus::Menus(QMenuBar& bar, QObject& receiver, std::function<void(int commandId)> runCommand)
    : bar_(bar), receiver_(receiver), runCommand_(std::move(runCommand)) {
    QList<QMenu*> open;
    for (const MenuRow& row : MenuTable()) {
        const QString text = QString::fromUtf16(row.text);
        switch (row.kind) {
            case MenuRowKind::Menu:
                open.append(open.isEmpty() ? bar.addMenu(text) : open.last()->addMenu(text));
                break;
            case MenuRowKind::End:
                open.removeLast();
                break;
            case MenuRowKind::Separator:
                open.last()->addSeparator();
                break;
            case MenuRowKind::Placeholder:
                open.last()->addAction(text)->setEnabled(false);
                break;
            case MenuRowKind::Entry:
            case MenuRowKind::Tick: {
                QAction* action = AddEntry(*open.last(), row.commandId, text);
                action->setCheckable(row.kind == MenuRowKind::Tick);
                action->setShortcuts(QKeySequence::listFromString(QString::fromLatin1(row.keys)));
                // The editing keys act where the focus is: the message pane and the fields have their own.
                if (Contains(kEditCommands, row.commandId)) action->setShortcutContext(Qt::WidgetShortcut);
                break;
            }
        }
    }
    ShowTicks();
    // What changes in many places is looked up when it comes on screen.
    const auto showRestore = [this] {
        Action(kCmdRestorePrevious)->setEnabled(App()->project.previousProject != nullptr);
    };
    showRestore();
    QObject::connect(FindSubmenu(QStringLiteral("&FIle")), &QMenu::aboutToShow, &receiver_, showRestore);
    for (const RecentMenuRow& row : kRecentMenus) {
        const QMenu* submenu = FindSubmenu(QString::fromUtf16(row.label));
        QObject::connect(static_cast<QMenu*>(submenu->parent()), &QMenu::aboutToShow, &receiver_,
                         [this, &row] { RebuildRecentMenu(*this, row); });
    }
}

QAction* Menus::AddEntry(QMenu& menu, int commandId, const QString& text) {
    QAction* action = menu.addAction(text);
    action->setData(commandId);
    action->setEnabled(IsCommandAvailable(commandId));
    QObject::connect(action, &QAction::triggered, &receiver_,
                     [run = runCommand_, commandId] { run(commandId); });
    actions_[commandId] = action;
    return action;
}

void Menus::ShowTicks() {
    const AppState& app = *App();
    SetTick(kCmdUseGdiDisplay, app.run->useGdiDisplay != 0);
    SetTick(kCmdShowChannelBuffers, app.run->showChannelBuffers != 0);
    SetTick(kCmdMultisampleFirst + int(app.display.multisampleIndex), true);
    if (const FrameBufferFormatRow* row = FindFrameBufferFormatOf(app.run->frameBufferFormat))
        SetTick(row->commandId, true);
    SetTick(kCmdSnapToEdges, app.display.snapToEdges != 0);
    SetTick(kCmdLockWindows, Windows().LockWindows());
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

QMenu* Menus::FindSubmenu(const QString& label) const {
    return FindMenu(bar_.actions(), label);
}

bool Menus::FillSubmenu(const QString& label, int firstId, const QStringList& texts) {
    QMenu* menu = FindSubmenu(label);
    if (!menu) return false;
    for (QAction* action : menu->actions()) {
        actions_.erase(action->data().toInt());
        menu->removeAction(action);
        // It may be the one whose choice leads here.
        action->deleteLater();
    }
    for (int i = 0; i < texts.size(); ++i)
        AddEntry(*menu, firstId + i, MenuText(texts[i]));
    menu->setEnabled(!texts.isEmpty());
    return true;
}

void Menus::FillLayouts(const QStringList& names) {
    const QStringList shown =
        names.first(std::min<qsizetype>(names.size(), kCmdLayoutLast - kCmdLayoutFirst + 1));
    layouts_.clear();
    for (int i = 0; i < shown.size(); ++i)
        layouts_[kCmdLayoutFirst + i] = shown[i];
    FillSubmenu(QStringLiteral("Window Layouts"), kCmdLayoutFirst, shown);
}

}  // namespace pixelgrove
