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

void FillMenu(QMenu& menu, std::span<const MenuRow> rows,
              const std::function<CommandState(int commandId)>& stateOf) {
    QList<QMenu*> open{&menu};
    for (const MenuRow& row : rows) {
        const QString text = QString::fromUtf16(row.text);
        switch (row.kind) {
            case MenuRowKind::Menu:
                open.append(open.last()->addMenu(text));
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
                const QString key = ShownKey(row);
                QAction* action = open.last()->addAction(key.isEmpty() ? text : text + u'\t' + key);
                action->setData(row.commandId);
                action->setCheckable(row.kind == MenuRowKind::Tick);
                ShowState(*action, stateOf(row.commandId));
                break;
            }
        }
    }
}

CommandState AlwaysAvailable(int) {
    return {.isAvailable = true};
}

}  // namespace pixelgrove
