// Tests of the main window need an application on a display; without one they are skipped.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "ui/Display.h"
#include "windows/widgets/Theme.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    pixelgrove::ChooseWindowPlatform();
    std::unique_ptr<QApplication> application;
    if (!GTEST_FLAG_GET(list_tests) && pixelgrove::MissingDisplayText().isEmpty()) {
        application = std::make_unique<QApplication>(argc, argv);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        pixelgrove::ApplyTheme(*application, pixelgrove::UiColours());
    }
    return RUN_ALL_TESTS();
}
