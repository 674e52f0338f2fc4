#include "platform/Programs.h"

#include <QProcess>
#include <QStandardPaths>

#include "platform/Environment.h"

namespace pixelgrove {

namespace {

constexpr const char* kOpeners[] = {"xdg-open", "x-www-browser", "firefox", "chromium", "google-chrome"};

}  // namespace

bool StartProgram(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessEnvironment(UserEnvironment());
    return process.startDetached();
}

bool OpenAddress(const QString& address) {
    const bool isWeb = address.startsWith(QLatin1String("https://"), Qt::CaseInsensitive) ||
                       address.startsWith(QLatin1String("http://"), Qt::CaseInsensitive);
    if (!isWeb) return false;
    for (const char* name : kOpeners) {
        const QString program = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!program.isEmpty()) return StartProgram(program, {address});
    }
    return false;
}

}  // namespace pixelgrove
