// ControlText: the values of all controls as lines of source text, and back. Pure.
#pragma once

#include <QString>
#include <QStringList>

#include "core/ControlSet.h"

namespace pixelgrove {

// One "#define NAME \tVALUE" a record, defines first, then uniforms from record 1 on, each ended by CR LF.
// Whole lines only, at most 16,384 characters: what is beyond them is left out. Empty without controls.
QString ExportDefinesToText(const ControlSet& controls);

// Gives each line's value to the uniform, or else to the define, of its name. Lines that match nothing and
// values out of a define's range are skipped.
void ImportDefinesFromText(ControlSet& controls, const QStringList& lines);

}  // namespace pixelgrove
