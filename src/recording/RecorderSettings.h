// Where and how frames are recorded. Size and method stand in AppState.
//
// Plain fields belong to the main thread; the atomic one says who reads it.
#pragma once

#include <QString>
#include <atomic>
#include <cstdint>

namespace pixelgrove {

struct RecorderSettings {
    static constexpr qsizetype kMaxPathLength = 259;  // of folder and format, in code units
    static constexpr int32_t kMaxFrameDelayMs = 10000;

    QString format = QStringLiteral("Untitled-%04d.png");  // file name with one number field
    QString folder;                                        // ScreenShots in the data folder, unless chosen
    std::atomic<uint32_t> frameDelayMs{500};  // rest between frames; main writes, render thread reads
    // The key combination that the user chose, by its name and as it was then.
    QString friendlyName, start, stop;
};

}  // namespace pixelgrove
