// The main of tests with windows. These need an application on an X display; without one they are skipped.
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QApplication>
#include <memory>

#include "look/widgets/Theme.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool hasDisplay = qgetenv("QT_QPA_PLATFORM") == "xcb" && !xcb_connection_has_error(connection);
    xcb_disconnect(connection);
    std::unique_ptr<QApplication> application;
    if (!GTEST_FLAG_GET(list_tests) && hasDisplay) {
        application = std::make_unique<QApplication>(argc, argv);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        pixelgrove::ApplyTheme(*application, pixelgrove::UiColours());
    }
    return RUN_ALL_TESTS();
}
