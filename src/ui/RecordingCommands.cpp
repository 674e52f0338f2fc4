#include "ui/RecordingCommands.h"

#include <chrono>
#include <memory>
#include <optional>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "recording/RecorderSettings.h"
#include "recording/widgets/ExternalRecorder.h"
#include "recording/widgets/RecordingDialog.h"
#include "render/FrameRecorder.h"
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

// A recording of frames that goes on is ended by every entry, whatever the settings say by now.
bool IsForFrames(const AppState& app, const RecorderSettings& recorder) {
    return recorder.method != 0 || app.run->recordingActive != 0;
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
         .run =
             [external, &app, &recorder](int id) {
                 const std::optional<std::chrono::seconds> length = LengthOf(id);
                 if (IsForFrames(app, recorder))
                     SetRecordingState(app, length ? uint32_t(length->count()) : kManualStopSeconds);
                 else
                     external->Toggle(*OutputFrame(), length);
             },
         .isAvailable = [&app,
                         &recorder](int) { return IsForFrames(app, recorder) || OutputFrame() != nullptr; }});
}

}  // namespace pixelgrove
