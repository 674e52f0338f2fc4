// Start-up and shut-down of the workbench, in their fixed order.
//
// Steps that live in higher folders are handed in as functions; one that is empty is left out, because the
// subsystem isn't part of the program. Main thread.
#pragma once

#include <functional>

#include "core/BaseFolders.h"

namespace pixelgrove {

struct StartupSteps {
    // Start-up, in order.
    std::function<void()> startAudio;
    std::function<void()> registerWindows;
    std::function<void()> loadSettings;
    std::function<void()> copyControlColours;
    std::function<void()>
        runMainDialog;  // blocks for the whole run; the render thread has ended when it returns
    // Shut-down, in order.
    std::function<void()> stopAudio;
    std::function<void()> saveSettings;
    std::function<void()> freeControls;
    std::function<void()> freeWindows;
    std::function<void()> freeRecorderTable;
};

constexpr int kExitNoSharedMemory = -42;

// The program's entry body. Returns 0, also when a record can't be allocated; kExitNoSharedMemory when the
// shared palette can't be made (the caller ends the process with it at once, nothing is cleaned up).
int ApplicationMain(const StartupSteps& steps, const FolderChoice& folders = ProgramFolders());

}  // namespace pixelgrove
