// What the main window's keys do beside its menus' and buttons' commands: the keys of playback, and the ways
// round the window's parts and stages. Main thread.
#pragma once

#include <cstdint>
#include <functional>

class QWidget;

namespace Ui {
class EditWindow;
}

namespace pixelgrove {

// The keys of playback, which stand on no menu: the tool tips of Play and Stop name them. runCommand is
// called while the window is the active one.
void AddPlaybackKeys(QWidget& window, std::function<void(int commandId)> runCommand);

// Gives the focus to the next or previous one of editor, messages, tree, stages, channels and buttons that
// can take it. From a control beside them, to the editor.
void FocusNeighbourPane(const Ui::EditWindow& form, bool forward);

// The stage behind or before that one in the row of those that exist, the first behind the last.
uint32_t NeighbourStage(uint32_t stage, bool forward);

}  // namespace pixelgrove
