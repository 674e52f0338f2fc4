// RunningForm: the one way from what is edited to what runs, and to what a project file holds.
//
// Main thread. The result is a value of its own: edits that follow don't reach it, and a run that was given
// it needs neither documents nor controls.
#pragma once

#include "core/EditingForm.h"
#include "core/ShaderProject.h"

namespace pixelgrove {

// Stages that have a text get their kind and that text, baked (see BakeDefines); all have their channels,
// which share pixels and volumes with those of the editing form.
ShaderProject MakeRunningForm(const EditingForm& project);

}  // namespace pixelgrove
