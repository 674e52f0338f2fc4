// Which commands the main window has: each feature registers its own, and here those of the window itself.
#include <QApplication>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "ui/AudioWindowRow.h"
#include "ui/BrowserWindowRow.h"
#include "ui/ControlCommands.h"
#include "ui/HelpCommands.h"
#include "ui/KeyCommands.h"
#include "ui/MainWindow.h"
#include "ui/OutputWindowRow.h"
#include "ui/PaletteCommands.h"
#include "ui/PictureCommands.h"
#include "ui/PlaybackCommands.h"
#include "ui/ProjectMenu.h"
#include "ui/RecordingCommands.h"
#include "ui/channels/StageCommands.h"
#include "ui/editor/EditorCommands.h"
#include "ui/editor/EditorMenu.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

void MainWindow::RegisterCommands() {
    commands_.Add(kCmdOk, [this] { close(); });
    commands_.Add(kCmdCancel, [this] { close(); });
    commands_.Add(kCmdBeep, [] { QApplication::beep(); });
    for (const bool forward : {false, true}) {
        commands_.Add(forward ? kCmdNextPane : kCmdPreviousPane,
                      [this, forward] { FocusNeighbourPane(*form_, app_.project.currentStage, forward); });
    }
    RegisterPlaybackCommands(commands_, playback_);
    RegisterPictureCommands(commands_, app_, channelPanel_);
    form_->editor->SetSharedStage(app_.project.documents[kStageCommon]);
    RegisterEditorCommands(commands_, *form_->editor, find_, projects_.dialogs);
    RegisterControlCommands(commands_, *form_->editor, *Controls(), [this] { controls_.Publish(); });
    RegisterStageCommands(commands_, app_.project, *form_->stageButtons, channelPanel_);
    RegisterProjectCommands(commands_, projects_, app_.project);
    reload_.Register(commands_);
    RegisterLayoutCommands(
        commands_, app_, layouts_, [this](int id) { return menus_->LayoutName(id); },
        [this] { RefreshLayoutMenu(); });
    RegisterRecordingCommands(commands_, app_, settings_, *this);
    RegisterPaletteCommands(commands_, app_, *this);
    RegisterPictureTaking(commands_, player_, projects_.dialogs, pane_);
    RegisterHelpCommands(commands_, *this, projects_.dialogs);
    // In the order in which a layout opens them.
    AddOutputWindow(*windows_, commands_, app_, player_, *this, playback_);
    AddBrowserWindow(*windows_, commands_, app_.recent, *this, projects_, pane_);
    AddAudioWindow(*windows_, commands_, settings_.audio);
}

void MainWindow::SendCommand(int id) {
    if (commands_.Run(id)) menus_->ShowStates();
}

void MainWindow::PopUpEditorMenu(const QPoint& globalPosition) {
    ShowEditorMenu(*form_->editor, commands_, globalPosition, [this](int id) { SendCommand(id); });
}

}  // namespace pixelgrove
