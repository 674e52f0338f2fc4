// How a recording is made, and what its files are called. The frames' size and the rest between them, which a
// run reads as it goes, stand in RunControls.
//
// Main thread; a run may outlive it and gets what it needs of it by value.
#pragma once

#include <QString>
#include <cstdint>

namespace pixelgrove {

struct RecorderSettings {
    static constexpr qsizetype kMaxPathLength = 259;  // of folder and format, in code units

    uint32_t method = 0;                                   // 0 a screen recorder, 1 files of frames
    QString format = QStringLiteral("Untitled-%04d.png");  // file name with one number field
    QString folder;                                        // ScreenShots in the data folder, unless chosen
    // The key combination that the user chose, by its name and as it was then.
    QString friendlyName, start, stop;
};

}  // namespace pixelgrove
