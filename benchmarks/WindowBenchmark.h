// The main of benchmarks with windows: application object, look and global records around one function.
#pragma once

#include <QApplication>
#include <cstdio>

#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "look/widgets/Theme.h"
#include "project/ProjectModel.h"
#include "ui/Display.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

// The exit status: that of run, or 1 without a display.
inline int RunOnDisplay(int argc, char** argv, int (*run)()) {
    ChooseWindowPlatform();
    if (const QString missing = MissingDisplayText(); !missing.isEmpty()) {
        std::fprintf(stderr, "%s: %s\n", argv[0], qPrintable(missing));
        return 1;
    }
    QApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    ApplyTheme(application, UiColours());
    if (!AllocateGlobals()) return 1;
    SetBaseFolders();
    const int result = run();
    ClearProject(App()->project, false);
    Windows().Clear();
    FreeGlobals();
    return result;
}

}  // namespace pixelgrove
