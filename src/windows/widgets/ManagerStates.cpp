#include "windows/widgets/ManagerStates.h"

#include <QWidget>

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
    return ManagerSupports({kMaximisedStates[0], kMaximisedStates[1]});
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
