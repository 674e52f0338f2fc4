#include "app/WorkbenchOptions.h"

namespace pixelgrove {

WorkbenchOptions ParseWorkbenchOptions(const QStringList& arguments) {
    WorkbenchOptions options;
    bool onlyFiles = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (onlyFiles || !argument.startsWith(u'-')) {
            options.files.append(argument);
        } else if (argument == QLatin1String("--")) {
            onlyFiles = true;
        } else if (argument == QLatin1String("--watch")) {
            options.watch = true;
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            options.help = true;
        } else if (argument == QLatin1String("--version")) {
            options.version = true;
        } else if (argument == QLatin1String("-session")) {
            ++i;  // from a session manager, for the window library
        } else if (options.error.isEmpty()) {
            options.error = QStringLiteral("Unknown option %1.").arg(argument);
        }
    }
    return options;
}

QString WorkbenchUsage() {
    return QStringLiteral(
        "Usage: pixelgrove [--watch] [FILE|ID]\n"
        "  FILE       a project (.json) to open, or a shader (.glsl) as the Image stage of a new project\n"
        "  ID         the id of a shader on Shadertoy: letters and digits\n"
        "  --watch    read the file again whenever another program changes it\n"
        "  --help     show this text\n"
        "  --version  show the program's version\n");
}

}  // namespace pixelgrove
