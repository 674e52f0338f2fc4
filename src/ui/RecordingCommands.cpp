#include "ui/RecordingCommands.h"

#include <memory>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "recording/RecorderSettings.h"
#include "recording/widgets/ExternalRecorder.h"
#include "recording/widgets/RecordingDialog.h"
#include "ui/MainWindow.h"
#include "ui/WorkbenchSettings.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

namespace {

FrameWindow* OutputFrame() {
    return Windows().Find(kOutputWin);
}

// Nothing for the one that the user stops.
std::optional<std::chrono::seconds> LengthOf(int commandId) {
    constexpr std::chrono::seconds kLengths[] = {std::chrono::seconds(10), std::chrono::seconds(20),
                                                 std::chrono::seconds(30), std::chrono::seconds(60)};
    if (commandId == kCmdRecordManualStop) return {};
    return kLengths[commandId - kCmdRecordFor10s];
}

}  // namespace

void RegisterRecordingCommands(CommandRegistry& commands, AppState& app, const WorkbenchSettings& settings,
                               MainWindow& mainWindow) {
    RecorderSettings& recorder = settings.recorder;
    RecorderTable& keyCombos = settings.keyCombos;
    commands.Add(kCmdRecordingSettings, [&app, &recorder, &keyCombos, &mainWindow] {
        ExecOnce(new RecordingDialog(&mainWindow, app, recorder, keyCombos), [] {});
    });
    const auto external = std::make_shared<ExternalRecorder>(
        keyCombos, [&mainWindow](const QString& text) { mainWindow.SetStatusText(text); });
    commands.Add(
        {.first = kCmdRecordFor10s,
         .last = kCmdRecordManualStop,
         .run = [external](int id) { external->Toggle(*OutputFrame(), LengthOf(id)); },
         .isAvailable = [&recorder](int) { return recorder.method == 0 && OutputFrame() != nullptr; }});
}

}  // namespace pixelgrove
