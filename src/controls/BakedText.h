// BakedText: the values of `#define` controls, written into the text that is compiled. Main thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <vector>

#include "core/ControlSet.h"
#include "core/Stages.h"

namespace pixelgrove {

// A line of a stage in which a control's value replaced what the user wrote.
struct BakedLine {
    int line = 0;     // from 1
    QString control;  // the record's display name
    QString source;   // the line as the user wrote it, from the keyword on
    QString value;
};

using BakedStages = std::array<std::vector<BakedLine>, kStageCount>;

struct BakedText {
    QByteArray text;  // in the code page, each CR replaced by LF
    std::vector<BakedLine> lines;
};

// A stage's text as it goes to the assembler. Scans its defines into `controls`, so that records with
// unchanged labels give the user's values and all others the defaults of their lines. Every line keeps its
// length but one that is too short for the value, which becomes as long as it must. A line whose value would
// stand on the next one stays as it is.
BakedText BakeDefines(ControlSet& controls, const QString& stageText);

// The same without controls, as a project file gets it: the user's own text, each CR replaced by LF.
QByteArray PlainStageText(const QString& stageText);

}  // namespace pixelgrove
