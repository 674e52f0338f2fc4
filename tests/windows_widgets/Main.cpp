// Tests of the window frames need an application on a display; without one they are skipped.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "windows/widgets/Theme.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::unique_ptr<QApplication> application;
    if (!GTEST_FLAG_GET(list_tests) && !qEnvironmentVariableIsEmpty("DISPLAY")) {
        application = std::make_unique<QApplication>(argc, argv);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        pixelgrove::ApplyTheme(*application, pixelgrove::UiColours());
    }
    return RUN_ALL_TESTS();
}
