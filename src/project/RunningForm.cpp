#include "project/RunningForm.h"

#include <utility>

namespace pixelgrove {

namespace {

// sourceOf(id, text) gives the text of a stage in the form that is wanted.
template <typename SourceOf>
ShaderProject Convert(const EditingForm& project, SourceOf sourceOf) {
    ShaderProject form;
    form.version = project.projectVersion;
    form.info = project.projectInfo;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        ShaderStage& stage = form.stages[id];
        if (project.documents[id].hasText) {
            stage.kind = id;
            stage.source = sourceOf(id, project.documents[id].text);
        }
        stage.channels = project.channels[id];
        for (uint32_t channel = 0; channel < kChannelCount; ++channel)
            stage.channels[channel].channelIndex = channel;
    }
    return form;
}

}  // namespace

RunningForm MakeRunningForm(const EditingForm& project, ControlSet& controls) {
    RunningForm form;
    form.project = Convert(project, [&](uint32_t id, const QString& text) {
        BakedText baked = BakeDefines(controls, text);
        form.baked[id] = std::move(baked.lines);
        return baked.text;
    });
    return form;
}

ShaderProject MakeFileForm(const EditingForm& project) {
    return Convert(project, [](uint32_t, const QString& text) { return PlainStageText(text); });
}

}  // namespace pixelgrove
