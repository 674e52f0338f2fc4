// pixelgrove [FILE]: the workbench. FILE is a project to open.

#include <unistd.h>

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "core/BaseFolders.h"
#include "core/Commands.h"
#include "core/Startup.h"
#include "persist/Settings.h"
#include "render/RenderThread.h"
#include "render/widgets/OutputWindow.h"
#include "ui/Display.h"
#include "ui/MainWindow.h"
#include "ui/Theme.h"

namespace {

using namespace pixelgrove;

// Presses Play by itself once the windows stand.
constexpr const char* kAutoplayVariable = "PIXELGROVE_AUTOPLAY";

constexpr int kFrameDelayMs = 100;
constexpr QSize kOutputRoom(652, 400);  // beside the main window

// In the middle of the screen together with the output window to come, which is opened at the right.
void Place(MainWindow& window) {
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize size = window.size().boundedTo(room.size());
    window.resize(size);
    const int left = (room.width() - size.width() - kOutputRoom.width()) / 2;
    const int top = (room.height() - size.height()) / 2;
    window.move(room.left() + std::max(0, left), room.top() + std::max(0, top));
}

void RunMainDialog(const QString& projectFile) {
    MainWindow window;
    QObject::connect(&window, &MainWindow::Closed, [] { QCoreApplication::exit(0); });
    const bool opened = window.OpenInitialProject(projectFile);
    Place(window);
    window.show();
    // The output window is placed by this one's frame, which the window manager adds a little later.
    QTimer::singleShot(kFrameDelayMs, &window, [&window, opened] {
        window.OpenOutputWindow();
        // What was wrong with the file must stay readable: no play by itself then.
        if (opened && qEnvironmentVariable(kAutoplayVariable) == QStringLiteral("1") && App()->openGlOk)
            window.SendCommand(kCmdPlay, 0);
    });
    QCoreApplication::exec();
}

// What isn't there, or can't be read or written, leaves the program as it is by default, without a message.
void LoadWorkbenchSettings() {
    LoadSettings(SettingsPath(), PathOf(PathId::ColourSettings));
}

void SaveWorkbenchSettings() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect desktop = screen->virtualGeometry();
        StoredSettings().layout.desktop = {desktop.left(), desktop.top(), desktop.left() + desktop.width(),
                                           desktop.top() + desktop.height()};
    }
    SaveSettings(SettingsPath());
}

}  // namespace

int main(int argc, char** argv) {
    ChooseWindowPlatform();
    const QString missing = MissingDisplayText();
    if (!missing.isEmpty()) {
        std::fprintf(stderr, "pixelgrove: %s\n", qPrintable(missing));
        return 1;
    }
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pixelgrove"));
    QGuiApplication::setApplicationDisplayName(QString());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/pixelgrove.png")));
    ApplyTheme(application);

    StartupSteps steps;
    steps.loadSettings = LoadWorkbenchSettings;
    steps.saveSettings = SaveWorkbenchSettings;
    steps.runMainDialog = [] { RunMainDialog(QCoreApplication::arguments().value(1)); };
    const int result = ApplicationMain(steps);
    if (result == kExitNoSharedMemory) {
        std::fprintf(stderr, "pixelgrove: the shared palette memory cannot be made\n");
        _exit(result);
    }
    // A thread that is stuck in the graphics driver must not see the process's objects taken apart.
    if (AbandonedRuns() > 0) _exit(result);
    return result;
}
