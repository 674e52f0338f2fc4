#include "ui/AudioWindowRow.h"

namespace pixelgrove {

void AddAudioWindow(WindowTable&, CommandRegistry&, AudioParameters&) {}

}  // namespace pixelgrove
