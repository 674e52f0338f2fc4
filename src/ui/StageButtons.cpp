#include "ui/StageButtons.h"

#include <QCursor>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>

#include "core/ProjectModel.h"
#include "windows/widgets/Theme.h"

namespace pixelgrove {

namespace {

// "+" first, then the stages in their order; Image is the last.
QString StyleOf(bool current, bool inError) {
    const char* ground = current ? (inError ? "#ff8080" : "#80ff80") : (inError ? "#b28080" : "#80b280");
    const char* hover = current ? (inError ? "#ff9696" : "#9cff9c") : (inError ? "#c49393" : "#93c493");
    return QStringLiteral(
               "QPushButton { background: %1; color: %2; border: 1px solid %3; border-radius: 3px;"
               " padding: 3px 10px; } QPushButton:hover { background: %4; }"
               " QPushButton:focus { border-color: %5; }")
        .arg(QLatin1String(ground), current ? QStringLiteral("#000000") : QStringLiteral("#333333"),
             (current ? Theme().text : Theme().line).name(), QLatin1String(hover), Theme().accent.name());
}

}  // namespace

StageButtons::StageButtons(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (uint32_t stage = 0; stage < kStageCount; ++stage) {
        auto* button = new QPushButton(StageName(stage), this);
        const QString name = stage == kStageNone ? QStringLiteral("Add") : StageName(stage).remove(u' ');
        button->setObjectName(QStringLiteral("stage%1Button").arg(name));
        button->setProperty("controlId", stageTabs[stage].buttonId);
        button->setFocusPolicy(Qt::TabFocus);
        button->setVisible(false);
        row->addWidget(button);
        buttons_[stage] = button;
        connect(button, &QPushButton::clicked, this, [this, stage] {
            if (runCommand) runCommand(stageTabs[stage].buttonId);
        });
        if (stage == kStageNone || stage == kStageImage) continue;
        button->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(button, &QPushButton::customContextMenuRequested, this,
                [this, button, stage](const QPoint& at) { PopUpRemoveMenu(stage, button->mapToGlobal(at)); });
    }
    buttons_[kStageNone]->setToolTip(QStringLiteral("Add a stage"));
    row->addStretch(1);
}

void StageButtons::Refresh() {
    const AppState& app = *App();
    for (uint32_t stage = 0; stage < kStageCount; ++stage) {
        QPushButton* button = buttons_[stage];
        const bool current = stage != kStageNone && stage == app.currentStage;
        button->setText(current ? QStringLiteral("[ %1 ]").arg(StageName(stage)) : StageName(stage));
        const QString style = StyleOf(current, !app.stageErrors[stage].isEmpty());
        if (stage != kStageNone && button->styleSheet() != style) button->setStyleSheet(style);
        button->setVisible(stageTabs[stage].exists != 0 || stage == kStageImage);
    }
}

void StageButtons::PopUpAddMenu() {
    const std::vector<uint32_t> stages = AddableStages();
    if (stages.empty()) return;
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("addStageMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (uint32_t stage : stages) {
        QAction* action = menu->addAction(StageName(stage));
        action->setData(stage);
        connect(action, &QAction::triggered, this, [stage] {
            AddStage(stage);
            SelectStage(stage);
        });
    }
    menu->popup(QCursor::pos());
}

void StageButtons::PopUpRemoveMenu(uint32_t stage, const QPoint& globalPosition) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("removeStageMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(QStringLiteral("Remove Buffer")), &QAction::triggered, this,
            [stage] { RemoveStage(stage); });
    menu->popup(globalPosition);
}

}  // namespace pixelgrove
