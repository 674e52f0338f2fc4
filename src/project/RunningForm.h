// RunningForm: the one way from what is edited to what runs, and to what a project file holds.
//
// Main thread. The results are values of their own: edits that follow don't reach them, and a run that was
// given one needs neither documents nor controls.
#pragma once

#include "controls/BakedText.h"
#include "core/ControlSet.h"
#include "core/EditingForm.h"
#include "core/ShaderProject.h"

namespace pixelgrove {

struct RunningForm {
    ShaderProject project;
    BakedStages baked;  // which lines of its stages hold a control's value
};

// Stages that have a text get their kind and that text, all have their channels, which share pixels and
// volumes with those of the editing form. The texts are baked in the order of the stages (see BakeDefines):
// afterwards the define records are those of the last one.
RunningForm MakeRunningForm(const EditingForm& project, ControlSet& controls);

// The same with each text as the user wrote it.
ShaderProject MakeFileForm(const EditingForm& project);

}  // namespace pixelgrove
