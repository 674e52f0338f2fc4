// The settings that windows of the workbench show and change, which none of what is played or edited holds.
//
// Their owner outlives the main window. Main thread, but for what each record says of its own.
#pragma once

namespace pixelgrove {

struct AudioParameters;
struct RecorderSettings;
struct RecorderTable;

struct WorkbenchSettings {
    RecorderSettings& recorder;
    RecorderTable& keyCombos;
    AudioParameters& audio;
};

}  // namespace pixelgrove
