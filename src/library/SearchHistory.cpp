#include "library/SearchHistory.h"

#include <QFileInfo>

#include "library/CacheNames.h"
#include "library/FolderWalk.h"

namespace pixelgrove {

QStringList SearchHistory(const QString& folder) {
    QStringList texts;
    ForEachFile(folder, [&texts](const WalkedFile& file) {
        const std::optional<QString> query = Base32Decode(QFileInfo(file.Name()).completeBaseName());
        if (query) texts.append(query->section(u'?', 0, 0).section(u'&', 0, 0).replace(u'+', u' '));
        return true;
    });
    return texts;
}

}  // namespace pixelgrove
