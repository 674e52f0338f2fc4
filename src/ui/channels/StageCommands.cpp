#include "ui/channels/StageCommands.h"

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/EditingForm.h"
#include "project/ProjectModel.h"
#include "ui/channels/ChannelPanel.h"
#include "ui/channels/StageButtons.h"

namespace pixelgrove {

void RegisterStageCommands(CommandRegistry& commands, EditingForm& project, StageButtons& buttons,
                           ChannelPanel& channels) {
    commands.Add(kCmdStageImage, [&project] { SelectStage(project, kStageImage); });
    commands.Add(kCmdStageAdd, [&buttons] { buttons.PopUpAddMenu(); });
    commands.Add({.first = kCmdStageCommon, .last = kCmdStageCubeA, .run = [&project](int id) {
                      SelectStage(project, uint32_t(id - kCmdStageAdd));
                  }});
    commands.Add(kCmdNextStage,
                 [&project] { SelectStage(project, NeighbourStage(project.currentStage, true)); });
    commands.Add(kCmdPreviousStage,
                 [&project] { SelectStage(project, NeighbourStage(project.currentStage, false)); });
    commands.Add({.first = kCmdChannelFirst, .last = kCmdChannelLast, .run = [&channels](int id) {
                      channels.PopUpMenu(uint32_t(id - kCmdChannelFirst));
                  }});
}

uint32_t NeighbourStage(uint32_t stage, bool forward) {
    for (uint32_t turn = 1; turn < kStageCount; ++turn) {
        const uint32_t next = (stage + (forward ? turn : kStageCount - turn)) % kStageCount;
        if (next == kStageImage || (next != kStageNone && stageTabs[next].exists)) return next;
    }
    return stage;
}

}  // namespace pixelgrove
