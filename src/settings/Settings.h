// The settings files: read once at start before any window is made, written once when the main window has
// closed.
//
// Every room keeps its own record, which has its defaults when it is made; Settings knows them all and alone
// knows their form in the file. Main thread; the audio thread may run.
#pragma once

#include <QString>
#include <QStringList>
#include <array>

namespace pixelgrove {

struct AppState;
struct AudioParameters;
struct RecorderSettings;
struct RecorderTable;
struct UiColours;
struct WindowLayout;

// Where the settings live while the program runs. Their owners outlive the Settings.
struct SettingsRecords {
    AppState& app;
    RecorderSettings& recorder;
    RecorderTable& keyCombos;
    AudioParameters& audio;
    WindowLayout& layout;
    UiColours& colours;
};

// PixelgroveGlobals.XML in the data folder; empty when there is no usable data folder.
QString SettingsPath();

class Settings {
  public:
    explicit Settings(const SettingsRecords& records) : records_(records) {}

    // Takes what the settings file holds and after it the colours, into records that were just made. A number
    // out of its setting's range is clamped or left out as the setting has it, a text that is too long or a
    // number that its field can't hold leaves the default. Without a readable settings file the colours
    // aren't read either. False when either file can't be read; Notice then has what the user should know.
    bool Load(const QString& settingsPath, const QString& coloursPath);

    // Writes the settings file; it is replaced whole or not at all. The combination in force is brought in
    // line with the one that the user chose, or the other way round where none is chosen.
    //
    // The file is read anew first, under a lock among the instances of the program: what another one added to
    // the recent lists stays, and a damaged file is kept as BadSettingsPath. A file that could not be read,
    // at the start or now, is left alone.
    //
    // False when nothing was written; reason then says why.
    bool Save(const QString& settingsPath, QString* reason = nullptr);

    // Of the last Load, see SettingsNotice.
    const QString& Notice() const { return notice_; }

  private:
    SettingsRecords records_;
    // The file was there and was refused by the system: it may hold anything, so nothing is written over it.
    bool leaveAlone_ = false;
    QString notice_;
    // Files, projects, palettes, playlists: what of the lists is this process's own doing shows against
    // these.
    std::array<QStringList, 4> recentAsRead_;
};

}  // namespace pixelgrove
