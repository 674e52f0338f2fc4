#include "ui/about/AboutPages.h"

#include <QDir>

#include "core/BaseFolders.h"
#include "core/SeedData.h"
#include "platform/Files.h"

namespace pixelgrove {

namespace {

const QString kLineEnd = QStringLiteral("\r\n");

QString Rows(const QStringList& paths) {
    QString rows;
    for (const QString& path : paths)
        rows += u'\t' + path + kLineEnd;
    return rows;
}

}  // namespace

QString HelpFolder() {
    const QString beside = PathOf(PathId::ExeBase) + u'/' + kHelpFolder;
    return IsFolder(beside) ? beside : InstalledDataFolder() + u'/' + kHelpFolder;
}

QString DocumentOf(AboutPage page) {
    switch (page) {
        case AboutPage::About:
            return QStringLiteral("About.md");
        case AboutPage::Help:
            return QStringLiteral("Guide/Overview.md");
        case AboutPage::License:
            return QStringLiteral("License.md");
        case AboutPage::Thanks:
            return QStringLiteral("Thanks.md");
        default:
            return {};
    }
}

QString LinkedDocument(const QString& document, const QString& link) {
    return QDir::cleanPath(document.first(document.lastIndexOf(u'/') + 1) + link);
}

QString DocumentText(const QString& folder, const QString& document) {
    const std::optional<QByteArray> bytes = ReadWholeFile(folder + u'/' + document);
    return bytes ? QString::fromUtf8(*bytes)
                 : QStringLiteral("Missing file: ") + document.sliced(document.lastIndexOf(u'/') + 1);
}

QString FolderListing(const QString& libraryFolder, const QStringList& libraries) {
    QString text =
        QStringLiteral("Moirelane configuration type: %1").arg(ConfigurationType()) + kLineEnd + kLineEnd;
    QStringList folders, own, others;
    for (int id = 0; id < int(PathId::Count); ++id)
        folders.append(PathOf(PathId(id)));
    text += QStringLiteral("Moirelane Folder Paths:") + kLineEnd + Rows(folders);
    if (libraries.isEmpty()) return text + QStringLiteral("Failed to enumerate process modules.\n");
    for (const QString& path : libraries)
        (path.startsWith(libraryFolder + u'/') ? own : others).append(path);
    text += kLineEnd + kLineEnd + QStringLiteral("Moirelane Modules:") + kLineEnd + Rows(own);
    return text + kLineEnd + kLineEnd + QStringLiteral("Modules of the System:") + kLineEnd + Rows(others);
}

}  // namespace pixelgrove
