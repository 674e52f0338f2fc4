#include "ui/OutputWindowRow.h"

#include "commands/Commands.h"
#include "render/FrameRecorder.h"
#include "render/widgets/OutputCommands.h"
#include "render/widgets/OutputWindow.h"
#include "ui/MainWindow.h"
#include "ui/Playback.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowTable.h"

namespace pixelgrove {

void AddOutputWindow(WindowTable& windows, CommandRegistry& commands, AppState& app, Player& player,
                     MainWindow& mainWindow, Playback& playback) {
    const auto make = [&commands, &app, &player, &mainWindow, &playback]() -> FrameWindow* {
        auto* output =
            new OutputWindow(app, player, commands, [&mainWindow](int id) { mainWindow.SendCommand(id); });
        QObject::connect(output, &OutputWindow::Closed, &mainWindow, [&playback, output] {
            const QSize pixels = output->Client()->size() * output->devicePixelRatioF();
            playback.NoteOutputSize({pixels.width(), pixels.height()});
        });
        // Whoever opens it goes on typing here.
        output->LeaveFocusTo(mainWindow);
        return output;
    };
    const QString name = QString::fromUtf16(kOutputWin);
    windows.Add({name, kCmdAnimationWindow, make}, commands);
    RegisterOutputCommands(commands, [name] { return static_cast<OutputWindow*>(Windows().Find(name)); });
}

void ShowOutputState(const RunControls& controls) {
    FrameWindow* output = Windows().Find(QString::fromUtf16(kOutputWin));
    if (!output) return;
    static_cast<OutputWindow*>(output)->ShowState({.isPlaying = controls.hasContext != 0,
                                                   .fps = controls.fpsCurrent,
                                                   .recordedPercent = RecordedPercent(controls)});
}

}  // namespace pixelgrove
