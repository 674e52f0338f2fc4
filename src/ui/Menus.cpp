#include "ui/Menus.h"

#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <iterator>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "commands/MenuTable.h"
#include "ui/RecentMenus.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {

namespace {

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

Menus::Menus(QMenuBar& bar, QObject& receiver, const CommandRegistry& commands, const RecentLists& recent,
             std::function<void(int commandId)> runCommand)
    : bar_(bar), receiver_(receiver), commands_(commands), runCommand_(std::move(runCommand)) {
    QList<QMenu*> open;
    for (const MenuRow& row : MenuBarRows()) {
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
            case MenuRowKind::FocusEntry:
            case MenuRowKind::Tick: {
                QAction* action = AddEntry(*open.last(), row.commandId, text);
                action->setCheckable(row.kind == MenuRowKind::Tick);
                action->setShortcuts(QKeySequence::listFromString(QString::fromLatin1(row.keys)));
                if (row.kind == MenuRowKind::FocusEntry) action->setShortcutContext(Qt::WidgetShortcut);
                break;
            }
        }
    }
    ShowStates();
    // What changes in many places is looked up when it comes on screen.
    QObject::connect(FindSubmenu(QStringLiteral("&FIle")), &QMenu::aboutToShow, &receiver_,
                     [this] { ShowStates(); });
    for (const RecentMenuRow& row : kRecentMenus) {
        const QMenu* submenu = FindSubmenu(QString::fromUtf16(row.label));
        QObject::connect(static_cast<QMenu*>(submenu->parent()), &QMenu::aboutToShow, &receiver_,
                         [this, &row, &recent] { FillRecentMenu(*this, row, recent); });
    }
}

QAction* Menus::AddEntry(QMenu& menu, int commandId, const QString& text) {
    QAction* action = menu.addAction(text);
    action->setData(commandId);
    ShowState(*action, commands_.StateOf(commandId));
    QObject::connect(action, &QAction::triggered, &receiver_,
                     [run = runCommand_, commandId] { run(commandId); });
    actions_[commandId] = action;
    return action;
}

void Menus::ShowStates() {
    for (const auto& [commandId, action] : actions_)
        ShowState(*action, commands_.StateOf(commandId));
}

QAction* Menus::Action(int commandId) const {
    const auto found = actions_.find(commandId);
    return found == actions_.end() ? nullptr : found->second;
}

QList<QAction*> Menus::EditActions() const {
    QList<QAction*> actions;
    for (const MenuRow& row : MenuBarRows())
        if (row.kind == MenuRowKind::FocusEntry) actions.append(Action(row.commandId));
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
