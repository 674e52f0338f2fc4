#include "ui/Display.h"

#include <xcb/xcb.h>

#include "platform/Environment.h"

namespace pixelgrove {

namespace {

constexpr const char* kPlatformVariable = "QT_QPA_PLATFORM";

// An entry is a platform's name, and its options behind a colon.
bool IsX11(const QString& entry) {
    return entry.section(u':', 0, 0) == QLatin1String("xcb");
}

}  // namespace

void ChooseWindowPlatform() {
    const QString given = qEnvironmentVariable(kPlatformVariable);
    if (given.isEmpty()) SetVariable(kPlatformVariable, QStringLiteral("xcb"));
    if (IsX11(given)) return;
    for (const QString& entry : given.split(u';'))
        if (IsX11(entry)) SetVariable(kPlatformVariable, entry);
}

QString MissingDisplayText() {
    const QString platform = qEnvironmentVariable(kPlatformVariable);
    if (!IsX11(platform))
        return QStringLiteral(
                   "QT_QPA_PLATFORM asks for \"%1\", where windows can't be placed.\n"
                   "Unset it, or set it to \"xcb\"; a Wayland session has an X display too.")
            .arg(platform);
    const QString display = qEnvironmentVariable("DISPLAY");
    if (display.isEmpty()) return QStringLiteral("no X display: the environment variable DISPLAY is not set");
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool failed = xcb_connection_has_error(connection) != 0;
    xcb_disconnect(connection);
    return failed ? QStringLiteral("the X display \"%1\" cannot be opened").arg(display) : QString();
}

}  // namespace pixelgrove
