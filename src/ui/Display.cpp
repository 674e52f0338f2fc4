#include "ui/Display.h"

#include <xcb/xcb.h>

namespace pixelgrove {

void ChooseWindowPlatform() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
}

QString MissingDisplayText() {
    if (!qEnvironmentVariable("QT_QPA_PLATFORM", QStringLiteral("xcb")).startsWith(QLatin1String("xcb")))
        return {};
    const QString display = qEnvironmentVariable("DISPLAY");
    if (display.isEmpty()) return QStringLiteral("no X display: the environment variable DISPLAY is not set");
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool failed = xcb_connection_has_error(connection) != 0;
    xcb_disconnect(connection);
    return failed ? QStringLiteral("the X display \"%1\" cannot be opened").arg(display) : QString();
}

}  // namespace pixelgrove
