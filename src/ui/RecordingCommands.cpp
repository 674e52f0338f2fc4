#include "ui/RecordingCommands.h"

namespace pixelgrove {

void RegisterRecordingCommands(CommandRegistry&, AppState&, const WorkbenchSettings&, MainWindow&) {}

}  // namespace pixelgrove
