#include "app/Startup.h"

#include <unistd.h>

#include <QFileInfo>
#include <cstdio>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "audio/AudioParameters.h"
#include "camera/CameraCapture.h"
#include "capture/AudioCapture.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "core/SeedData.h"
#include "look/UiColours.h"
#include "media/LiveFeeds.h"
#include "platform/SharedMemory.h"
#include "project/ProjectModel.h"
#include "recording/RecorderSettings.h"
#include "recording/RecorderTable.h"
#include "settings/Settings.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

namespace {

void AllocateRecentLists(AppState& app) {
    // Without memory a list stays null and the program runs without it.
    for (auto* list : {&app.recent.recentFiles, &app.recent.recentProjects, &app.recent.recentPalettes,
                       &app.recent.recentPlaylists}) {
        list->reset(new (std::nothrow) StringList);
    }
}

// What isn't there leaves the program as it is by default, without a message.
void LoadWorkbenchSettings(Settings& settings) {
    const bool isFirstStart = !QFileInfo::exists(SettingsPath());
    if (isFirstStart) SeedDataFolder();
    settings.Load(SettingsPath(), PathOf(PathId::ColourSettings));
    PrintError(settings.Notice());
    Windows().RecoverStoredRows();
}

// The block under the common name belongs to whoever made it first; another user of the machine gets one of
// their own. Where that name too is in other hands, the program does without a tool that could reach it.
std::unique_ptr<SharedMemory> OpenSharedPalette() {
    auto palette = SharedMemory::CreateOrOpen(kPaletteMemoryName, sizeof(PaletteBlock));
    if (palette) return palette;
    const std::string own = kPaletteMemoryName + std::string("-") + std::to_string(getuid());
    palette = SharedMemory::CreateOrOpen(own.c_str(), sizeof(PaletteBlock));
    return palette ? std::move(palette) : SharedMemory::CreatePrivate(sizeof(PaletteBlock));
}

void ShutDown(AppState& app, Settings& settings) {
    StopAudioCapture();
    SetCameraOpener({});
    StopCamera();
    SaveWorkbenchSettings(settings);
    FreeDocuments(app.project);
    Windows().Clear();
    app.project.includeContext.reset();
    for (auto* list : {&app.recent.recentFiles, &app.recent.recentProjects, &app.recent.recentPalettes,
                       &app.recent.recentPlaylists}) {
        list->reset();
    }
    app.palette.shared.reset();
    FreeGlobals();
}

}  // namespace

int ApplicationMain(const FolderChoice& folders,
                    const std::function<void(const StartedWorkbench&)>& runMainWindow) {
    if (!AllocateGlobals()) return 0;
    AppState& app = *App();
    app.project.startTime = 0.1f;
    SetBaseFolders(folders);
    MakeDataFolders();
    RecorderSettings recorder;
    RecorderTable keyCombos;
    const auto audio = std::make_shared<AudioParameters>();
    UiColours colours;
    // The program runs as well without sound.
    StartAudioCapture(audio);
    // Opened by the first project that reads it.
    SetCameraOpener(StartCamera);
    Windows().RegisterDefaultWindows();
    AllocateRecentLists(app);
    Settings settings({app, recorder, keyCombos, *audio, Windows().Layout(), colours});
    LoadWorkbenchSettings(settings);
    app.palette.shared = OpenSharedPalette();
    if (!app.palette.shared) {
        StopAudioCapture();
        return kExitNoSharedMemory;
    }
    runMainWindow({app, settings, {recorder, keyCombos, *audio}, colours});
    ShutDown(app, settings);
    return 0;
}

void SaveWorkbenchSettings(Settings& settings) {
    Windows().Layout().desktop = CurrentDesktop().value_or(EdgeRect{});
    QString reason;
    if (!settings.Save(SettingsPath(), &reason))
        PrintError(QStringLiteral("the settings can't be saved: %1.").arg(reason));
}

void PrintError(const QString& text) {
    if (!text.isEmpty()) std::fprintf(stderr, "pixelgrove: %s\n", qPrintable(text));
}

}  // namespace pixelgrove
