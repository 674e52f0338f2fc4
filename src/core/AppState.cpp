#include "core/AppState.h"

#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "platform/SharedMemory.h"

namespace pixelgrove {

namespace {
AppState* appState = nullptr;
ControlSet* controlSet = nullptr;
bool pinned = false;

struct PinnedRecords {
    AppState* state;
    ControlSet* controls;
};

// Never destroyed, so that pinned records outlast even the end of main.
std::vector<PinnedRecords>& Pinned() {
    static auto* const records = new std::vector<PinnedRecords>;
    return *records;
}
}  // namespace

AppState::AppState() = default;
AppState::~AppState() = default;

AppState* App() {
    return appState;
}

ControlSet* Controls() {
    return controlSet;
}

bool AllocateGlobals() {
    if (appState && controlSet) return true;
    std::unique_ptr<AppState> state(new (std::nothrow) AppState);
    if (!state) return false;
    std::unique_ptr<ControlSet> controls(new (std::nothrow) ControlSet);
    if (!controls) return false;
    appState = state.release();
    controlSet = controls.release();
    return true;
}

void PinGlobals() {
    pinned = true;
}

void FreeGlobals() {
    if (pinned) {
        Pinned().push_back({std::exchange(appState, nullptr), std::exchange(controlSet, nullptr)});
        return;
    }
    delete std::exchange(appState, nullptr);
    delete std::exchange(controlSet, nullptr);
}

}  // namespace pixelgrove
