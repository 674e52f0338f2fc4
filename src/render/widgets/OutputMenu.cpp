#include "render/widgets/OutputMenu.h"

#include <iterator>

#include "commands/Commands.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {
namespace {

// In the order of the commands from kCmdWindowSizeFirst.
constexpr QSize kSizes[] = {{640, 480},   {720, 480},   {800, 600},   {1024, 768},  {1280, 720},
                            {1280, 800},  {1280, 1024}, {1360, 768},  {1400, 1050}, {1600, 1200},
                            {1680, 1050}, {1920, 1080}, {1920, 1200}, {2560, 1440}};
static_assert(std::size(kSizes) == kCmdWindowSizeLast - kCmdWindowSizeFirst + 1);

}  // namespace

void FillOutputMenu(QMenu& menu, bool alwaysOnTop, bool fullScreen, bool (*isAvailable)(int commandId)) {
    FillMenu(menu, OutputMenuRows(), [=](int commandId) -> CommandState {
        const bool isTicked = commandId == kCmdAlwaysOnTop ? alwaysOnTop : fullScreen;
        return {isAvailable(commandId), isTicked};
    });
}

std::optional<QSize> OutputMenuSize(int commandId) {
    if (commandId < kCmdWindowSizeFirst || commandId > kCmdWindowSizeLast) return std::nullopt;
    return kSizes[commandId - kCmdWindowSizeFirst];
}

}  // namespace pixelgrove
