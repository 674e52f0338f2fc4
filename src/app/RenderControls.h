// RenderControls: the live controls of a project on a command line. Pure.
#pragma once

#include <QString>
#include <optional>

#include "core/ControlSet.h"

namespace pixelgrove {

// A number as a command line gives it: "true" is 1, "false" 0. Nothing for all that is no finite number.
std::optional<double> ControlNumber(const QString& text);

struct ControlSetting {
    bool isControl = false;  // false: no record has this name, and none was changed
    QString problem;         // why the control can't have this value, as a sentence; else empty
};

// Sets the uniforms with this name, else the first define with it. A define is named by its macro or by its
// label, a flag also by any of its options; blanks around labels and options don't count. The value of a
// list is an option or its index, that of a flag that an option names an option.
ControlSetting SetControl(ControlSet& controls, const QString& name, const QString& value);

// A line for each control as the tree has them: path, type, "MINIMUM..MAXIMUM" or options with commas between
// them, value; tabs between these.
QString ControlLines(const ControlSet& controls);

}  // namespace pixelgrove
