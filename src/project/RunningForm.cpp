#include "project/RunningForm.h"

#include "controls/BakedText.h"

namespace pixelgrove {

ShaderProject MakeRunningForm(const EditingForm& project) {
    ShaderProject running;
    running.version = project.projectVersion;
    running.info = project.projectInfo;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        ShaderStage& stage = running.stages[id];
        if (project.documents[id].hasText) {
            stage.kind = id;
            stage.source = PlainStageText(project.documents[id].text);
        }
        stage.channels = project.channels[id];
        for (uint32_t channel = 0; channel < kChannelCount; ++channel)
            stage.channels[channel].channelIndex = channel;
    }
    return running;
}

}  // namespace pixelgrove
