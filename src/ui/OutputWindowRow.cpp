#include "ui/OutputWindowRow.h"

#include "commands/Commands.h"
#include "render/widgets/OutputWindow.h"
#include "ui/MainWindow.h"
#include "ui/Playback.h"
#include "windows/widgets/WindowTable.h"

namespace pixelgrove {

void AddOutputWindow(WindowTable& windows, CommandRegistry& commands, AppState& app, MainWindow& mainWindow,
                     Playback& playback) {
    const auto make = [&app, &mainWindow, &playback]() -> FrameWindow* {
        auto* output = new OutputWindow(app);
        QObject::connect(output, &OutputWindow::Closed, &mainWindow, [&playback, output] {
            const QSize pixels = output->Client()->size() * output->devicePixelRatioF();
            playback.NoteOutputSize({pixels.width(), pixels.height()});
        });
        // Whoever opens it goes on typing here.
        output->LeaveFocusTo(mainWindow);
        return output;
    };
    windows.Add({QString::fromUtf16(kOutputWin), kCmdAnimationWindow, make}, commands);
}

}  // namespace pixelgrove
