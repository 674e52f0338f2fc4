// The commands that show and add stages, and the channels' menus. Main thread.
#pragma once

#include <cstdint>

namespace pixelgrove {

class ChannelPanel;
class CommandRegistry;
class StageButtons;
struct EditingForm;

// All of them outlive the registry.
void RegisterStageCommands(CommandRegistry& commands, EditingForm& project, StageButtons& buttons,
                           ChannelPanel& channels);

// The stage behind or before that one in the row of those that exist, the first behind the last.
uint32_t NeighbourStage(uint32_t stage, bool forward);

}  // namespace pixelgrove
