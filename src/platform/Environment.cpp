#include "platform/Environment.h"

#include <QDir>
#include <QFile>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace pixelgrove {

namespace {

// What the variables of SetVariable were before its first call; nothing for one that wasn't there.
std::map<std::string, std::optional<QString>>& GivenValues() {
    static std::map<std::string, std::optional<QString>> values;
    return values;
}

}  // namespace

QString ProgramPath() {
    std::error_code failure;
    const std::filesystem::path target = std::filesystem::read_symlink("/proc/self/exe", failure);
    if (failure) return QString();
    return QFile::decodeName(QByteArray::fromStdString(target.native()));
}

QStringList ProgramFilesFolders() {
    return {QStringLiteral("/usr"), QStringLiteral("/usr/local"), QStringLiteral("/opt")};
}

QString ApplicationDataFolder() {
    QString given = QFile::decodeName(qgetenv("XDG_DATA_HOME"));
    if (given.startsWith(u'/')) return given;
    return QDir::homePath() + QStringLiteral("/.local/share");
}

void SetVariable(const char* name, const QString& value) {
    auto& given = GivenValues();
    if (!given.contains(name))
        given[name] =
            qEnvironmentVariableIsSet(name) ? std::optional(qEnvironmentVariable(name)) : std::nullopt;
    qputenv(name, QFile::encodeName(value));
}

QProcessEnvironment UserEnvironment() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : GivenValues()) {
        if (value)
            environment.insert(QString::fromLatin1(name), *value);
        else
            environment.remove(QString::fromLatin1(name));
    }
    return environment;
}

QString ExpandVariables(const QString& text) {
    QString result;
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype open = text.indexOf(u'%', at);
        const qsizetype close = open < 0 ? -1 : text.indexOf(u'%', open + 1);
        if (close < 0) break;
        result += QStringView(text).mid(at, open - at);
        const QByteArray name = QFile::encodeName(text.mid(open + 1, close - open - 1));
        if (!name.isEmpty() && qEnvironmentVariableIsSet(name.constData())) {
            result += QFile::decodeName(qgetenv(name.constData()));
            at = close + 1;
        } else {
            // The closing sign may open the next name: "100%A%HOME%".
            result += QStringView(text).mid(open, close - open);
            at = close;
        }
    }
    result += QStringView(text).mid(at);
    return result;
}

}  // namespace pixelgrove
