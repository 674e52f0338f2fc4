#include "windows/widgets/MenuBuilder.h"

#include <QAction>
#include <QMenu>

namespace pixelgrove {

namespace {

QString ShownKey(const MenuRow& row) {
    const QString own = QString::fromLatin1(row.keys);
    return own.isEmpty() ? FirstKeyOf(row.commandId) : own;
}

}  // namespace

QString MenuText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

void ShowState(QAction& action, const CommandState& state) {
    action.setEnabled(state.isAvailable);
    if (action.isCheckable()) action.setChecked(state.isTicked);
}

void AddMenuRows(QWidget& menu, std::span<const MenuRow> rows,
                 const std::function<void(QAction& action, const MenuRow& row)>& made) {
    QList<QWidget*> open{&menu};
    const auto add = [&open](const QString& text) {
        auto* action = new QAction(text, open.last());
        open.last()->addAction(action);
        return action;
    };
    for (const MenuRow& row : rows) {
        const QString text = QString::fromUtf16(row.text);
        switch (row.kind) {
            case MenuRowKind::Menu: {
                auto* submenu = new QMenu(text, open.last());
                open.last()->addAction(submenu->menuAction());
                open.append(submenu);
                break;
            }
            case MenuRowKind::End:
                open.removeLast();
                break;
            case MenuRowKind::Separator:
                add(text)->setSeparator(true);
                break;
            case MenuRowKind::Placeholder:
                add(text)->setEnabled(false);
                break;
            case MenuRowKind::Entry:
            case MenuRowKind::FocusEntry:
            case MenuRowKind::Tick: {
                QAction* action = add(text);
                action->setData(row.commandId);
                action->setCheckable(row.kind == MenuRowKind::Tick);
                made(*action, row);
                break;
            }
        }
    }
}

void FillMenu(QMenu& menu, std::span<const MenuRow> rows,
              const std::function<CommandState(int commandId)>& stateOf) {
    AddMenuRows(menu, rows, [&stateOf](QAction& action, const MenuRow& row) {
        const QString key = ShownKey(row);
        if (!key.isEmpty()) action.setText(action.text() + u'\t' + key);
        ShowState(action, stateOf(row.commandId));
    });
}

CommandState AlwaysAvailable(int) {
    return {.isAvailable = true};
}

}  // namespace pixelgrove
