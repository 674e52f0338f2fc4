// Tests of the output window need an application on an X display; without one they are skipped.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

// After Qt, whose names it would turn into macros.
#include <X11/Xlib.h>

namespace {

bool HasDisplay() {
    Display* display = XOpenDisplay(nullptr);
    if (display) XCloseDisplay(display);
    return display != nullptr;
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
    std::unique_ptr<QApplication> application;
    const bool hasDisplay = qgetenv("QT_QPA_PLATFORM") == "xcb" && HasDisplay();
    if (!GTEST_FLAG_GET(list_tests) && hasDisplay) application = std::make_unique<QApplication>(argc, argv);
    return RUN_ALL_TESTS();
}
