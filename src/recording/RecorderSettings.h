// How a recording is made, and what its files are called. The frames' size and the rest between them, which a
// run reads as it goes, stand in RunControls.
//
// Main thread; the frames' path alone is shared with runs, which read it anew for each frame.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/SynchronizedValue.h"

namespace pixelgrove {

struct FramePathTemplate {
    QString folder;                                        // ScreenShots in the data folder, unless chosen
    QString format = QStringLiteral("Untitled-%04d.png");  // file name with one number field
};

// Written by the main thread.
using SharedFramePath = SynchronizedValue<FramePathTemplate>;

struct RecorderSettings {
    static constexpr qsizetype kMaxPathLength = 259;  // of folder and format, in code units

    uint32_t method = 0;  // 0 a screen recorder, 1 files of frames
    std::shared_ptr<SharedFramePath> framePath = std::make_shared<SharedFramePath>();
    // The key combination that the user chose, by its name and as it was then.
    QString friendlyName, start, stop;
};

}  // namespace pixelgrove
