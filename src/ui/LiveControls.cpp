#include "ui/LiveControls.h"

#include <QLabel>

#include "controls/Annotations.h"
#include "controls/LiveValues.h"
#include "controls/widgets/ControlTree.h"
#include "core/AppState.h"

namespace pixelgrove {

LiveControls::LiveControls(ControlTree& tree, QWidget& area, QLabel& hint, QWidget& form, AppState& app,
                           ControlSet& controls)
    : tree_(tree), area_(area), hint_(hint), form_(form), app_(app), controls_(controls) {
    InitialiseSpeed(controls_);
    Publish();
}

void LiveControls::Publish() {
    PublishControlValues(controls_, nullptr);
}

void LiveControls::NoteEdit(bool hasControlWords) {
    if (hasControlWords || controls_.uniformCount + controls_.defineCount == 0) Rebuild();
}

void LiveControls::Rebuild() {
    const EditingForm& project = app_.project;
    if (!project.currentDocument || !project.currentDocument->hasText || project.currentStage != kStageImage)
        return;
    InitialiseSpeed(controls_);
    PublishControlValues(controls_);
    tree_.ShowControls(controls_);
}

}  // namespace pixelgrove
