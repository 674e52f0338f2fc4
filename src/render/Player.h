// Player: what a workbench plays, and where: the current run and the render target of the next one.
//
// Made before the main window, which hands it by reference to all that plays, and kept until that is gone.
// Main thread alone; a run's thread goes by the references that the run itself holds.
#pragma once

#include <memory>

namespace pixelgrove {

class OutputSurface;
struct RenderRun;

struct Player {
    // What the output window last registered. Null until one was opened, stays after a close. A run holds its
    // own reference.
    std::shared_ptr<OutputSurface> outputSurface;
    std::shared_ptr<RenderRun> currentRun;  // null when no run was started
};

}  // namespace pixelgrove
