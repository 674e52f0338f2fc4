#include "windows/widgets/ManagerStates.h"

#include <QWidget>
#include <algorithm>

#include "windows/widgets/WindowSystem.h"
#include "windows/widgets/XServer.h"

namespace pixelgrove {

namespace {

// Of a message that changes a window's state.
constexpr uint32_t kRemove = 0;
constexpr uint32_t kAdd = 1;
constexpr uint32_t kFromApplication = 1;

constexpr uint32_t kIconic = 3;

constexpr const char* kMaximisedStates[] = {"_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT"};

xcb_window_t IdOf(const QWidget& window) {
    return xcb_window_t(window.winId());
}

}  // namespace

bool ManagerMaximises() {
    if (!XConnection() || !HasWindowManager()) return false;
    const std::vector<uint32_t> supported = ReadWords(RootWindow(), ExistingAtom("_NET_SUPPORTED"));
    return std::ranges::all_of(kMaximisedStates, [&supported](const char* state) {
        const xcb_atom_t atom = ExistingAtom(state);
        return atom != XCB_ATOM_NONE && std::ranges::find(supported, atom) != supported.end();
    });
}

void AskForMaximised(const QWidget& window, bool maximised) {
    AskManager(IdOf(window), "_NET_WM_STATE",
               {maximised ? kAdd : kRemove, ExistingAtom(kMaximisedStates[0]),
                ExistingAtom(kMaximisedStates[1]), kFromApplication, 0});
}

void AskForMinimised(const QWidget& window) {
    AskManager(IdOf(window), "WM_CHANGE_STATE", {kIconic, 0, 0, 0, 0});
}

void WithdrawAttention(const QWidget& window) {
    AskManager(
        IdOf(window), "_NET_WM_STATE",
        {kRemove, ExistingAtom("_NET_WM_STATE_DEMANDS_ATTENTION"), XCB_ATOM_NONE, kFromApplication, 0});
}

}  // namespace pixelgrove
