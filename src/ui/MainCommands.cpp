// Which commands the main window has: each feature registers its own, and here those of the window itself.
#include <QApplication>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "ui/KeyCommands.h"
#include "ui/MainWindow.h"
#include "ui/OutputWindowRow.h"
#include "ui/PlaybackCommands.h"
#include "ui/ProjectMenu.h"
#include "ui/channels/StageCommands.h"
#include "ui/editor/EditorCommands.h"
#include "ui/editor/EditorMenu.h"
#include "ui_EditWindow.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

void MainWindow::RegisterCommands(AppState& app) {
    commands_.Add(kCmdOk, [this] { close(); });
    commands_.Add(kCmdCancel, [this] { close(); });
    commands_.Add(kCmdBeep, [] { QApplication::beep(); });
    for (const bool forward : {false, true}) {
        commands_.Add(forward ? kCmdNextPane : kCmdPreviousPane, [this, &app, forward] {
            FocusNeighbourPane(*form_, app.project.currentStage, forward);
        });
    }
    RegisterPlaybackCommands(commands_, playback_);
    RegisterPictureCommands(commands_, app, channelPanel_);
    RegisterEditorCommands(commands_, *form_->editor, find_, projects_.dialogs);
    RegisterStageCommands(commands_, app.project, *form_->stageButtons, channelPanel_);
    RegisterProjectCommands(commands_, projects_, app.project);
    RegisterLayouts(app);
    AddOutputWindow(*windows_, commands_, app, player_, *this, playback_);
}

void MainWindow::RegisterLayouts(AppState& app) {
    commands_.Add(kCmdLoadLayout, [this] { layouts_.Load(); });
    commands_.Add(kCmdSaveLayout, [this] {
        layouts_.Save();
        RefreshLayoutMenu();
    });
    commands_.Add({.first = kCmdLayoutFirst, .last = kCmdLayoutLast, .run = [this](int id) {
                       const QString name = menus_->LayoutName(id);
                       if (!name.isEmpty()) layouts_.LoadNamed(name);
                   }});
    commands_.AddToggle(
        kCmdLockWindows, [] { Windows().SetLockWindows(!Windows().LockWindows()); },
        [] { return Windows().LockWindows(); });
    commands_.AddToggle(
        kCmdSnapToEdges,
        [&app] {
            app.display.snapToEdges = app.display.snapToEdges ? 0 : 1;
            Windows().SetSnapping(app.display.snapToEdges != 0);
        },
        [&app] { return app.display.snapToEdges != 0; });
}

void MainWindow::SendCommand(int id, intptr_t) {
    if (commands_.Run(id)) menus_->ShowStates();
}

void MainWindow::PopUpEditorMenu(const QPoint& globalPosition) {
    ShowEditorMenu(*form_->editor, commands_, globalPosition, [this](int id) { SendCommand(id, 0); });
}

}  // namespace pixelgrove
