// OwnSettings: the records that a main window shows and changes, at their defaults.
#pragma once

#include "audio/AudioParameters.h"
#include "recording/RecorderSettings.h"
#include "recording/RecorderTable.h"
#include "ui/WorkbenchSettings.h"

namespace pixelgrove::test {

struct OwnSettings {
    RecorderSettings recorder;
    RecorderTable keyCombos;
    AudioParameters audio;

    operator WorkbenchSettings() { return {recorder, keyCombos, audio}; }
};

}  // namespace pixelgrove::test
