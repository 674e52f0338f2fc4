#include "ui/HelpCommands.h"

namespace pixelgrove {

void RegisterHelpCommands(CommandRegistry&, MainWindow&) {}

}  // namespace pixelgrove
