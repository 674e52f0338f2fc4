// StageButtons: the row of tabs that chooses the stage in the editor, with "+" to add one.
//
// Shows the stages of stageTabs; one with an error text is tinted red. A tab's text has the current stage in
// brackets; what is painted is the bare name. Main thread.
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "core/Stages.h"

class QPushButton;

namespace pixelgrove {

struct EditingForm;

class StageButtons : public QWidget {
    Q_OBJECT

  public:
    explicit StageButtons(QWidget* parent = nullptr);

    // Once, before it is shown: whose stages they are, and what a press runs, the button's command id.
    void SetUp(EditingForm& project, std::function<void(int commandId)> runCommand);

    // Shows the tabs of the stages that exist, from the left in StageId order, with their captions and
    // colours. Image is always there, as the last.
    void Refresh();
    QPushButton* Button(uint32_t stage) const { return buttons_[stage]; }

    // A menu of the stages that can be added, at the mouse; nothing when there are none. A choice adds the
    // stage and shows it.
    void PopUpAddMenu();
    // A menu with "Remove Buffer"; nothing for "+" and Image.
    void PopUpRemoveMenu(uint32_t stage, const QPoint& globalPosition);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void LayOut();

    EditingForm* project_ = nullptr;
    std::function<void(int commandId)> runCommand_;
    std::array<QPushButton*, kStageCount> buttons_{};
};

}  // namespace pixelgrove
