#include "app/Startup.h"

#include <unistd.h>

#include <new>
#include <string>
#include <utility>

#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "platform/SharedMemory.h"
#include "project/ProjectModel.h"

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

// The block under the common name belongs to whoever made it first; another user of the machine gets one of
// their own. Where that name too is in other hands, the program does without a tool that could reach it.
std::unique_ptr<SharedMemory> OpenSharedPalette() {
    auto palette = SharedMemory::CreateOrOpen(kPaletteMemoryName, sizeof(PaletteBlock));
    if (palette) return palette;
    const std::string own = kPaletteMemoryName + std::string("-") + std::to_string(getuid());
    palette = SharedMemory::CreateOrOpen(own.c_str(), sizeof(PaletteBlock));
    return palette ? std::move(palette) : SharedMemory::CreatePrivate(sizeof(PaletteBlock));
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

int ApplicationMain(const StartupSteps& steps, const FolderChoice& folders) {
    if (!AllocateGlobals()) return 0;
    AppState& app = *App();
    app.startTime = 0.1f;
    SetBaseFolders(folders);
    MakeDataFolders();
    Run(steps.startAudio);
    Run(steps.registerWindows);
    AllocateRecentLists(app);
    Run(steps.loadSettings);
    Run(steps.copyControlColours);
    app.sharedPalette = OpenSharedPalette();
    if (!app.sharedPalette) return kExitNoSharedMemory;
    Run(steps.runMainDialog);
    ShutDown(app, steps);
    return 0;
}

}  // namespace pixelgrove
