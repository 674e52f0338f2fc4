#include "ui/KeyCommands.h"

#include <QAction>
#include <QApplication>
#include <algorithm>
#include <utility>

#include "commands/MenuTable.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

namespace {

// A part of the window by its controls, from the one that takes the focus on; the later ones stand in where
// that can't.
using Pane = QList<QWidget*>;

QList<Pane> PanesOf(const Ui::EditWindow& form, uint32_t shownStage) {
    return {
        {form.editor},
        {form.statusText},
        {form.treeView, form.controlArea},
        {form.stageButtons->Button(shownStage), form.stageButtons},
        {form.channelButton0, form.filterCombo0, form.wrapCombo0, form.vflipCheck0, form.channelButton1,
         form.filterCombo1, form.wrapCombo1, form.vflipCheck1, form.channelButton2, form.filterCombo2,
         form.wrapCombo2, form.vflipCheck2, form.channelButton3, form.filterCombo3, form.wrapCombo3,
         form.vflipCheck3},
        {form.playButton, form.stopButton, form.startButton, form.recordButton, form.pauseButton,
         form.randomizeCheck, form.startTimeEdit, form.setStartButton, form.fpsTarget, form.fpsCurrentEdit}};
}

bool Holds(const Pane& pane, const QWidget* focus) {
    return focus && std::ranges::any_of(pane, [focus](const QWidget* control) {
               return control == focus || control->isAncestorOf(focus);
           });
}

}  // namespace

void AddKeys(QWidget& window, std::function<void(int commandId)> runCommand) {
    for (const auto& [commandId, keys] : KeyRows()) {
        auto* action = new QAction(&window);
        action->setShortcuts(QKeySequence::listFromString(QString::fromLatin1(keys)));
        action->setAutoRepeat(false);  // one run for a key that is held
        QObject::connect(action, &QAction::triggered, &window,
                         [runCommand, id = commandId] { runCommand(id); });
        window.addAction(action);
    }
}

void FocusNeighbourPane(const Ui::EditWindow& form, uint32_t shownStage, bool forward) {
    const QList<Pane> panes = PanesOf(form, shownStage);
    const QWidget* focus = QApplication::focusWidget();
    const auto count = panes.size();
    qsizetype at =
        std::ranges::find_if(panes, [focus](const Pane& pane) { return Holds(pane, focus); }) - panes.begin();
    if (at == count) at = forward ? count - 1 : 1;
    for (qsizetype turn = 0; turn < count; ++turn) {
        at = (at + (forward ? 1 : count - 1)) % count;
        for (QWidget* control : panes[at]) {
            if (!control->isVisible() || !control->isEnabled() || control->focusPolicy() == Qt::NoFocus)
                continue;
            control->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

}  // namespace pixelgrove
