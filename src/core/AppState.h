// AppState: the first global record, in parts by owner: what is edited (`project`), what both sides of a run
// touch (`run`), and what is chosen once for all projects.
//
// Allocated at the very start, freed last, never moved; reached through App(). Main thread: a run's thread
// holds the records that it shares, `run` and the palette's table, by itself.
#pragma once

#include <cstdint>
#include <memory>

#include "core/ControlSet.h"
#include "core/EditingForm.h"
#include "core/Host.h"
#include "core/RunControls.h"
#include "core/StringList.h"
#include "media/PaletteBlock.h"

namespace pixelgrove {

class SharedMemory;

// The lists behind the menus of recent files; null where there was no memory for one.
struct RecentLists {
    std::unique_ptr<StringList> recentFiles, recentProjects, recentPalettes, recentPlaylists;
};

// What was chosen for windows and picture, and what the machine can do.
struct DisplayChoices {
    uint32_t alwaysOnTop = 0;  // the output window
    uint32_t snapToEdges = 0;
    uint32_t multisampleIndex = 0;  // 0 none, n means 2 to the power n samples
    bool openGlOk = false;          // the probe at start-up succeeded
};

struct PaletteRecord {
    std::shared_ptr<SharedPalette> table = std::make_shared<SharedPalette>();  // runs hold it too
    std::unique_ptr<SharedMemory> shared;  // where an outside tool leaves a PaletteBlock
};

struct AppState {
    Host* host = &SilentHost();
    std::shared_ptr<RunControls> run = std::make_shared<RunControls>();  // never null
    EditingForm project;
    RecentLists recent;
    DisplayChoices display;
    PaletteRecord palette;

    AppState();
    ~AppState();
};

// The record made at start-up, for the start-up to hand on. Main thread for plain fields. Null before
// AllocateGlobals and after FreeGlobals.
AppState* App();

// Makes both records; false when there is no memory for one (neither is kept then).
bool AllocateGlobals();
// Frees both, AppState first. Only with no run but abandoned ones.
void FreeGlobals();

}  // namespace pixelgrove
