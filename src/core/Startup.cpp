#include "core/Startup.h"

#include <new>

#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "core/ProjectModel.h"
#include "core/UniqueId.h"
#include "platform/SharedMemory.h"

namespace pixelgrove {

namespace {

void Run(const std::function<void()>& step) {
    if (step) step();
}

void AllocateRecentLists(AppState& app) {
    // Without memory a list stays null and the program runs without it.
    for (auto* list : {&app.recentFiles, &app.recentProjects, &app.recentPalettes, &app.recentPlaylists}) {
        list->reset(new (std::nothrow) StringList);
    }
}

void ShutDown(AppState& app, const StartupSteps& steps) {
    Run(steps.stopAudio);
    Run(steps.saveSettings);
    FreeDocuments();
    Run(steps.freeControls);
    Run(steps.freeWindows);
    app.includeContext.reset();
    for (auto* list : {&app.recentFiles, &app.recentProjects, &app.recentPalettes, &app.recentPlaylists}) {
        list->reset();
    }
    Run(steps.freeRecorderTable);
    app.sharedPalette.reset();
    FreeGlobals();
}

}  // namespace

int ApplicationMain(const StartupSteps& steps) {
    if (!AllocateGlobals()) return 0;
    AppState& app = *App();
    app.startTime = 0.1f;
    SetBaseFolders();
    MakeDataFolders();
    Run(steps.startAudio);
    Run(steps.registerWindows);
    AllocateRecentLists(app);
    Run(steps.loadSettings);
    Run(steps.copyControlColours);
    app.sharedPalette = SharedMemory::CreateOrOpen(kPaletteMemoryName, sizeof(PaletteBlock));
    if (!app.sharedPalette) return kExitNoSharedMemory;
    playTimer = NextUniqueId();
    secondTimer = NextUniqueId();
    Run(steps.runMainDialog);
    ShutDown(app, steps);
    return 0;
}

}  // namespace pixelgrove
