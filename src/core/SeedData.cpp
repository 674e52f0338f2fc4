#include "core/SeedData.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <optional>

#include "core/BaseFolders.h"
#include "platform/Environment.h"
#include "platform/Files.h"

namespace pixelgrove {

QString InstalledDataFolder() {
    // As cmake --install lays it out: bin beside share.
    const QString prefix = QFileInfo(QFileInfo(ProgramPath()).path()).path();
    return prefix + QStringLiteral("/share/orrisfield/moirelane");
}

void SeedDataFolder() {
    const QString to = PathOf(PathId::DatBase);
    if (!to.isEmpty()) CopyMissingFiles(InstalledDataFolder(), to, kHelpFolder);
}

void CopyMissingFiles(const QString& from, const QString& to, const QString& except) {
    const QDir source(from), target(to);
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString name = source.relativeFilePath(file);
        if (!except.isEmpty() && name.startsWith(except + u'/')) continue;
        const QString copy = target.filePath(name);
        const QFileInfo there(copy);
        if (there.exists() || there.isSymbolicLink()) continue;
        const std::optional<QByteArray> bytes = ReadWholeFile(file);
        if (bytes && QDir().mkpath(there.path())) WriteWholeFile(copy, *bytes, nullptr, Durability::System);
    }
}

}  // namespace pixelgrove
