#include "core/AppState.h"

#include <memory>
#include <new>
#include <utility>

#include "platform/SharedMemory.h"

namespace pixelgrove {

namespace {
AppState* appState = nullptr;
ControlSet* controlSet = nullptr;
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

void FreeGlobals() {
    delete std::exchange(appState, nullptr);
    delete std::exchange(controlSet, nullptr);
}

}  // namespace pixelgrove
