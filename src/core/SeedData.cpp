#include "core/SeedData.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <optional>

#include "core/BaseFolders.h"
#include "platform/Environment.h"
#include "platform/Files.h"

namespace pixelgrove {

void SeedDataFolder() {
    const QString to = PathOf(PathId::DatBase);
    if (to.isEmpty()) return;
    // As cmake --install lays them out: bin beside share.
    const QString prefix = QFileInfo(QFileInfo(ProgramPath()).path()).path();
    CopyMissingFiles(prefix + QStringLiteral("/share/orrisfield/moirelane"), to);
}

void CopyMissingFiles(const QString& from, const QString& to) {
    const QDir source(from), target(to);
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString copy = target.filePath(source.relativeFilePath(file));
        const QFileInfo there(copy);
        if (there.exists() || there.isSymbolicLink()) continue;
        const std::optional<QByteArray> bytes = ReadWholeFile(file);
        if (bytes && QDir().mkpath(there.path())) WriteWholeFile(copy, *bytes, nullptr, Durability::System);
    }
}

}  // namespace pixelgrove
