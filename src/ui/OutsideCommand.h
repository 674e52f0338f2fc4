// Commands that other programs send to the main window: an X11 client message of the type PIXELGROVE_COMMAND
// in 32-bit words, the first of which is the command id. Main thread.
#pragma once

#include <QByteArray>
#include <optional>

namespace pixelgrove {

// The command of a native event as QWidget::nativeEvent gets it; nothing for any other event, and 0 for an id
// that isn't taken from outside, as every one but kCmdPaletteChanged.
std::optional<int> OutsideCommandOf(const QByteArray& eventType, const void* message);

}  // namespace pixelgrove
