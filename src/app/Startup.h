// Start-up and shut-down of the workbench, in their fixed order. Main thread.
#pragma once

#include <QString>
#include <functional>

#include "core/BaseFolders.h"
#include "ui/WorkbenchSettings.h"

namespace pixelgrove {

class Settings;
struct AppState;
struct UiColours;

constexpr int kExitNoSharedMemory = -42;

// What start-up made, for as long as the main window runs.
struct StartedWorkbench {
    AppState& app;
    Settings& settings;
    WorkbenchSettings windowSettings;
    const UiColours& colours;  // as the settings have them
};

// The program's entry body. folders tells where the program's files live. runMainWindow blocks for the
// whole run; the render thread has ended when it returns.
//
// Returns 0, also when a record can't be allocated; kExitNoSharedMemory when the shared palette can't be made
// (the caller ends the process with it at once, nothing is cleaned up).
int ApplicationMain(const FolderChoice& folders,
                    const std::function<void(const StartedWorkbench&)>& runMainWindow);

// What shut-down does with the settings; also for an end from outside.
void SaveWorkbenchSettings(Settings& settings);

// One line on stderr; nothing for an empty text.
void PrintError(const QString& text);

}  // namespace pixelgrove
