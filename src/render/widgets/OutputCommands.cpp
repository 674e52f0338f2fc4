#include "render/widgets/OutputCommands.h"

#include <iterator>
#include <utility>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "render/widgets/OutputWindow.h"

namespace pixelgrove {
namespace {

// In the order of the commands from kCmdSize640x480.
constexpr QSize kSizes[] = {{640, 480},   {720, 480},   {800, 600},   {1024, 768},  {1280, 720},
                            {1280, 800},  {1280, 1024}, {1360, 768},  {1400, 1050}, {1600, 1200},
                            {1680, 1050}, {1920, 1080}, {1920, 1200}, {2560, 1440}};
static_assert(std::size(kSizes) == kCmdSize2560x1440 - kCmdSize640x480 + 1);

}  // namespace

void RegisterOutputCommands(CommandRegistry& commands, std::function<OutputWindow*()> window) {
    const auto isOpen = [window](int) { return window() != nullptr; };
    commands.Add({.first = kCmdSize640x480,
                  .last = kCmdSize2560x1440,
                  .run = [window](int id) { window()->ResizePicture(kSizes[id - kCmdSize640x480]); },
                  .isAvailable = isOpen});
    commands.Add({.first = kCmdAlwaysOnTop,
                  .last = kCmdAlwaysOnTop,
                  .run = [window](int) { window()->SetAlwaysOnTop(!window()->IsAlwaysOnTop()); },
                  .isAvailable = isOpen,
                  .isTicked = [window](int) { return window() && window()->IsAlwaysOnTop(); }});
    commands.Add({.first = kCmdFullScreen,
                  .last = kCmdFullScreen,
                  .run = [window](int) { window()->SetFullScreen(!window()->IsFullScreen()); },
                  .isAvailable = isOpen,
                  .isTicked = [window](int) { return window() && window()->IsFullScreen(); }});
}

}  // namespace pixelgrove
