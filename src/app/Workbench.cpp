// pixelgrove [--watch] [FILE|ID]: the workbench. FILE is a project to open, or a source file for a new one,
// ID a shader of the service.

#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <cstdio>

#include "app/Startup.h"
#include "app/WorkbenchOptions.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "library/CacheNames.h"
#include "look/widgets/Theme.h"
#include "platform/EndWatch.h"
#include "render/Player.h"
#include "render/RenderThread.h"
#include "settings/Settings.h"
#include "ui/Display.h"
#include "ui/MainWindow.h"
#include "windows/widgets/KeyPositions.h"

// Made with the program (cmake/BuildStamp.cmake).
extern const char kBuildStamp[];

namespace {

using namespace pixelgrove;

// Presses Play by itself once the windows stand.
constexpr const char* kAutoplayVariable = "PIXELGROVE_AUTOPLAY";

constexpr int kExitNoDisplay = 1;
constexpr int kExitWrongUsage = 2;

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/pixelgrove-%1.png").arg(size));
    return icon;
}

// Beside the settings; empty without a data folder, and then there are no recovery copies.
QString RecoveryFolder() {
    const QString data = PathOf(PathId::DatBase);
    return data.isEmpty() ? QString() : data + QStringLiteral("/Recovery");
}

// The file by its absolute path, so that the name stays good wherever it is kept, or the id as it is.
QString NamedProject(const QString& argument) {
    const QFileInfo file(argument);
    return !file.exists() && IsShaderId(argument) ? argument : file.absoluteFilePath();
}

// What was wrong goes to the message pane and to stderr.
bool OpenFiles(MainWindow& window, const QStringList& files) {
    if (files.isEmpty()) return true;
    const bool opened = window.OpenInitialProject(NamedProject(files.constFirst()));
    if (!opened) PrintError(window.StatusText());
    if (files.size() > 1) {
        const QString text = QStringLiteral("Only the first of %1 files was opened.").arg(files.size());
        PrintError(text);
        window.AddStatusLine(text);
    }
    return opened;
}

void RunMainWindow(const WorkbenchOptions& options, AppState& app, Settings& settings,
                   const WorkbenchSettings& windowSettings) {
    Player player;
    MainWindow window(app, player, windowSettings);
    QObject::connect(&window, &MainWindow::Closed, [] { QCoreApplication::exit(0); });
    window.OpenInitialProject({});
    window.StartRecovery(RecoveryFolder());
    const EndWatch watch([&window, &settings] {
        window.SaveBeforeEnd();
        SaveWorkbenchSettings(settings);
    });
    window.ShowWithLayout();
    // Behind the commands that open the layout's other windows.
    const auto begin = [&window, &app, &settings, &options] {
        // Whoever starts the program types here first, whatever else was opened.
        window.activateWindow();
        // What has to be fetched may take long, so the windows stand before.
        if (options.watch) window.SendCommand(kCmdReloadWhenChanged);
        const bool opened = OpenFiles(window, options.files);
        // What was wrong with a file must stay readable, and what was restored may have ended the program by
        // being played: no play by itself then.
        const bool isRestored = window.OfferRecovery();
        window.AddStatusLine(settings.Notice());
        if (isRestored || !opened) return;
        if (qEnvironmentVariable(kAutoplayVariable) == QStringLiteral("1") && app.display.openGlOk)
            window.PostCommand(kCmdPlay, 0);
    };
    QMetaObject::invokeMethod(&window, begin, Qt::QueuedConnection);
    QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    const WorkbenchOptions options = ParseWorkbenchOptions(arguments);
    if (!options.error.isEmpty()) {
        PrintError(options.error + u'\n' + WorkbenchUsage().trimmed());
        return kExitWrongUsage;
    }
    if (options.help || options.version) {
        const QString text =
            options.help ? WorkbenchUsage() : QStringLiteral("pixelgrove " PIXELGROVE_VERSION "\n");
        std::fputs(qPrintable(text), stdout);
        return 0;
    }
    ChooseWindowPlatform();
    const QString missing = MissingDisplayText();
    if (!missing.isEmpty()) {
        PrintError(missing);
        return kExitNoDisplay;
    }
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pixelgrove"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(kBuildStamp));
    QGuiApplication::setApplicationDisplayName(QString());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setWindowIcon(ProgramIcon());
    // By this desktops find the installed icon, and put the program's windows together.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.pixelgrove.pixelgrove"));
    new KeyPositions(&application);

    const int result = ApplicationMain(ProgramFolders(), [&](const StartedWorkbench& started) {
        ApplyTheme(application, started.colours);
        RunMainWindow(options, started.app, started.settings, started.windowSettings);
    });
    if (result == kExitNoSharedMemory) {
        PrintError(QStringLiteral("the shared palette memory cannot be made"));
        _exit(result);
    }
    // A thread that is stuck in the graphics driver must not see the process's objects taken apart.
    if (AbandonedRuns() > 0) _exit(result);
    return result;
}
