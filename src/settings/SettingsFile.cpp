#include "settings/SettingsFile.h"

#include <QStringList>
#include <optional>

#include "platform/Files.h"

namespace pixelgrove {

namespace {

// What the reader passes over in silence: an end that is missing, and elements that were never closed.
bool IsWhole(const QByteArray& bytes) {
    // The one NUL that belongs there is the last byte; a file whose end never reached the disk has more.
    const qsizetype nul = bytes.indexOf('\0');
    if (nul >= 0 && nul != bytes.size() - 1) return false;
    const QByteArray text = (nul < 0 ? bytes : bytes.first(nul)).trimmed().toLower();
    if (!text.contains("<globals>") || !text.endsWith('>')) return false;
    for (const QByteArray element :
         {"globals>", "recentfiles>", "recentprojects>", "recentpalettes>", "recentplaylists>"}) {
        const qsizetype start = text.indexOf('<' + element);
        if (start >= 0 && text.indexOf("</" + element, start) < 0) return false;
    }
    return true;
}

}  // namespace

SettingsFile ReadSettingsFile(const QString& path) {
    SettingsFile file;
    ReadFailure failure;
    std::optional<QByteArray> bytes = ReadWholeFile(path, XmlStore::kMaxCharacters + 1, &failure);
    if (bytes) {
        file.bytes = *std::move(bytes);
        file.store = XmlFromBytes(file.bytes);
        file.state = IsWhole(file.bytes) ? SettingsFileState::Whole : SettingsFileState::Damaged;
    } else if (!failure.isMissing) {
        file.state = SettingsFileState::Unreadable;
        file.reason = failure.reason;
    }
    return file;
}

QString BadSettingsPath(const QString& path) {
    return path + QStringLiteral(".bad");
}

QString SettingsNotice(const SettingsFile& file, const QString& path) {
    switch (file.state) {
        case SettingsFileState::Unreadable:
            return QStringLiteral(
                       "The settings can't be read: %1.\nWhat you change is not kept. The file stays as it "
                       "is: %2")
                .arg(file.reason, path);
        case SettingsFileState::Damaged:
            return QStringLiteral(
                       "The settings are damaged, so the defaults are used.\nThe damaged file will be kept "
                       "as %1")
                .arg(BadSettingsPath(path));
        default:
            return QString();
    }
}

}  // namespace pixelgrove
