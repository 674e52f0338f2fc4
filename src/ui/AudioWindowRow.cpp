#include "ui/AudioWindowRow.h"

#include "audio/widgets/AudioWindow.h"
#include "commands/Commands.h"
#include "windows/widgets/WindowTable.h"

namespace pixelgrove {

void AddAudioWindow(WindowTable& windows, CommandRegistry& commands, AudioParameters& parameters) {
    const auto make = [&parameters]() -> FrameWindow* { return new AudioWindow(parameters); };
    windows.Add({QString::fromUtf16(kAudioConfigWin), kCmdAudioConfiguration, make}, commands);
}

}  // namespace pixelgrove
