#include "ui/channels/StageButtons.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "project/ProjectModel.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {

namespace {

constexpr int kGap = 2;
// Black and inside, so that it differs from all grounds of the tabs and from what lies around them.
constexpr int kFocusLine = 2;
constexpr int kFocusInset = 3;

struct TabColours {
    QRgb ground;
    QRgb text;
};

TabColours ColoursOf(bool current, bool inError) {
    if (current) return {inError ? 0xffff8080 : 0xff80ff80, 0xff000000};
    return {inError ? 0xffb28080 : 0xff80b280, 0xff333333};
}

class StageTab : public QPushButton {
  public:
    // The row's project, once it has one.
    StageTab(uint32_t stage, EditingForm* const& project, QWidget* row)
        : QPushButton(StageName(stage), row), stage_(stage), project_(project) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_Hover);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        const bool current = stage_ == project_->currentStage && stage_ != kStageNone;
        const TabColours colours = ColoursOf(current, !project_->stageErrors[stage_].empty());
        QPainter painter(this);
        painter.fillRect(rect(), QColor(colours.ground));
        if (hasFocus()) {
            painter.setPen(QPen(Qt::black, kFocusLine, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
            painter.drawRect(rect().adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset));
        } else if (underMouse()) {
            painter.setPen(QColor(colours.text));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
        painter.setPen(QColor(colours.text));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, StageName(stage_));
    }
    // The other buttons' presses are not for the form behind the tab.
    void mousePressEvent(QMouseEvent* event) override {
        QPushButton::mousePressEvent(event);
        event->accept();
    }

  private:
    const uint32_t stage_;
    EditingForm* const& project_;
};

}  // namespace

StageButtons::StageButtons(QWidget* parent) : QWidget(parent) {
    for (uint32_t stage = 0; stage < kStageCount; ++stage) {
        auto* button = new StageTab(stage, project_, this);
        const QString name = stage == kStageNone ? QStringLiteral("Add") : StageName(stage).remove(u' ');
        button->setObjectName(QStringLiteral("stage%1Button").arg(name));
        button->setProperty("controlId", stageTabs[stage].buttonId);
        button->setProperty("stage", stage);
        button->setFocusPolicy(Qt::TabFocus);
        button->setVisible(false);
        button->installEventFilter(this);
        buttons_[stage] = button;
        connect(button, &QPushButton::clicked, this, [this, stage] {
            if (runCommand_) runCommand_(stageTabs[stage].buttonId);
        });
    }
    buttons_[kStageNone]->setToolTip(QStringLiteral("Add a stage"));
}

void StageButtons::SetUp(EditingForm& project, std::function<void(int commandId)> runCommand) {
    project_ = &project;
    runCommand_ = std::move(runCommand);
}

void StageButtons::Refresh() {
    for (uint32_t stage = 0; stage < kStageCount; ++stage) {
        if (!stageTabs[stage].exists) continue;
        const bool current = stage != kStageNone && stage == project_->currentStage;
        buttons_[stage]->setText(current ? QStringLiteral("[ %1 ]").arg(StageName(stage)) : StageName(stage));
    }
    LayOut();
    for (QPushButton* button : buttons_)
        button->update();
}

void StageButtons::LayOut() {
    // One width for all names, that of the widest; less where the row would not hold them.
    const QFontMetrics metrics(buttons_[kStageImage]->font());
    const int padding = metrics.averageCharWidth() * 2;
    int widest = 0;
    int shown = 0;
    for (uint32_t stage = kStageCommon; stage < kStageCount; ++stage) {
        widest = std::max(widest, metrics.horizontalAdvance(StageName(stage)));
        if (stageTabs[stage].exists || stage == kStageImage) ++shown;
    }
    const int addWidth = std::max(height(), metrics.horizontalAdvance(StageName(kStageNone)) + padding);
    const int room = (width() - addWidth) / std::max(1, shown) - kGap;
    const int tabWidth = std::max(1, std::min(widest + 2 * padding, room));

    int x = 0;
    for (uint32_t stage = 0; stage < kStageCount; ++stage) {
        QPushButton* button = buttons_[stage];
        const bool isShown = stageTabs[stage].exists || stage == kStageImage;
        button->setVisible(isShown);
        if (!isShown) continue;
        button->setGeometry(x, 0, stage == kStageNone ? addWidth : tabWidth, height());
        x += button->width() + kGap;
    }
}

void StageButtons::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LayOut();
}

bool StageButtons::eventFilter(QObject* watched, QEvent* event) {
    // The widths follow the font, which changes with the window's size.
    if (watched == buttons_[kStageImage] && event->type() == QEvent::FontChange) LayOut();
    if (event->type() != QEvent::ContextMenu) return QWidget::eventFilter(watched, event);
    PopUpRemoveMenu(watched->property("stage").toUInt(), static_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
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
        connect(action, &QAction::triggered, this, [this, stage] {
            AddStage(*project_, stage);
            SelectStage(*project_, stage);
        });
    }
    menu->popup(QCursor::pos());
}

void StageButtons::PopUpRemoveMenu(uint32_t stage, const QPoint& globalPosition) {
    if (stage == kStageNone || stage >= kStageImage) return;
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("removeStageMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    FillMenu(*menu, StageMenuRows(), AlwaysAvailable);
    connect(menu, &QMenu::triggered, this, [this, stage] { RemoveStage(*project_, stage); });
    menu->popup(globalPosition);
}

}  // namespace pixelgrove
