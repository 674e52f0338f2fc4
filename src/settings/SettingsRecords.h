// The settings that no field of AppState holds, as the program uses them while it runs.
//
// One record for the whole process, reached by StoredSettings(). Plain fields belong to the main thread;
// atomic ones say who reads them.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <atomic>

#include "look/UiColours.h"
#include "recording/RecorderTable.h"
#include "windows/WindowLayout.h"

namespace pixelgrove {

// Where and how frames are recorded. Size and method stand in AppState.
struct RecorderSettings {
    static constexpr qsizetype kMaxPathLength = 259;  // of folder and format, in code units
    static constexpr int32_t kMaxFrameDelayMs = 10000;

    QString format;                           // file name with one number field
    QString folder;                           // ScreenShots in the data folder, unless chosen
    std::atomic<uint32_t> frameDelayMs{500};  // rest between frames; main writes, render thread reads
    // The key combination that the user chose, by its name and as it was then.
    QString friendlyName, start, stop;
};

// How the spectrum is made. Main writes, the audio thread reads.
struct AudioParameters {
    static constexpr int32_t kMaxSmoothingWeight = 128;
    static constexpr int32_t kMaxNoiseLevel = 100;

    std::atomic<int32_t> smoothingWeight{8};  // 0..128; stored as AudioSensitivity
    std::atomic<int32_t> noiseLevel{1};       // 0..100; stored as AudioSmoothing
    std::atomic<double> homingFactor{0.999};  // 0..1
    std::atomic<bool> maximizeRange{false};
};

struct ColourBytes {
    uint8_t red = 0, green = 0, blue = 0;
};

// Of a colour 0x00BBGGRR.
constexpr ColourBytes UnpackColour(uint32_t colour) {
    return {uint8_t(colour), uint8_t(colour >> 8), uint8_t(colour >> 16)};
}

// What was found when the settings file was read. Main thread.
struct SettingsFileNotes {
    // The file is there and was refused by the system: it may hold anything, so nothing is written over it.
    bool leaveAlone = false;
    // See SettingsNotice.
    QString notice;
    // Files, projects, palettes, playlists: what of the lists is this process's own doing shows against
    // these.
    std::array<QStringList, 4> recentAsRead;
};

struct SettingsRecords {
    SettingsFileNotes file;
    RecorderSettings recorder;
    RecorderTable keyCombos;
    AudioParameters audio;
    WindowLayout layout;
    UiColours colours;
    // The built-in colours of that name, whatever the colour file says.
    ColourBytes meterHigh, meterLow;
};

// Made with its defaults at the first call, never destroyed. Any thread for the atomic fields.
SettingsRecords& StoredSettings();

}  // namespace pixelgrove
