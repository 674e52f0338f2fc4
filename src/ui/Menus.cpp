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
    AddMenuRows(bar, MenuBarRows(), [this](QAction& action, const MenuRow& row) {
        action.setShortcuts(QKeySequence::listFromString(QString::fromLatin1(row.keys)));
        if (row.kind == MenuRowKind::FocusEntry) action.setShortcutContext(Qt::WidgetShortcut);
        Connect(action, row.commandId);
    });
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

void Menus::Connect(QAction& action, int commandId) {
    QObject::connect(&action, &QAction::triggered, &receiver_,
                     [run = runCommand_, commandId] { run(commandId); });
    actions_[commandId] = &action;
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
    for (int i = 0; i < texts.size(); ++i) {
        QAction* action = menu->addAction(MenuText(texts[i]));
        action->setData(firstId + i);
        ShowState(*action, commands_.StateOf(firstId + i));
        Connect(*action, firstId + i);
    }
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
