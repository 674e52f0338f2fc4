// What the main window's keys do beside its menus' and buttons' commands. Main thread.
#pragma once

#include <cstdint>
#include <functional>

class QWidget;

namespace Ui {
class EditWindow;
}

namespace pixelgrove {

// The keys of commands that stand on no menu. runCommand is called while the window is the active one.
void AddKeys(QWidget& window, std::function<void(int commandId)> runCommand);

// Gives the focus to the next or previous one of editor, messages, tree, stages, channels and buttons that
// can take it. From a control beside them, to the editor.
void FocusNeighbourPane(const Ui::EditWindow& form, uint32_t shownStage, bool forward);

}  // namespace pixelgrove
