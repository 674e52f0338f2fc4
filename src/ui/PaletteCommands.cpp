#include "ui/PaletteCommands.h"

namespace pixelgrove {

void RegisterPaletteCommands(CommandRegistry&, AppState&, MainWindow&) {}

}  // namespace pixelgrove
