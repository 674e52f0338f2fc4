// The texts of the About box: documents read from files, and the listing of folders and modules.
//
// Main thread, after SetBaseFolders.
#pragma once

#include <QString>
#include <QStringList>

namespace pixelgrove {

// In the order of the box's buttons.
enum class AboutPage { About, Help, Updates, License, Folders, Thanks, Properties, Count };

// The folder with the documents: beside the program, or where it was installed.
QString HelpFolder();

// The file of a page that is a document, by its path in that folder; empty for other pages. Help begins the
// guide, whose documents lie together in a folder with their pictures.
QString DocumentOf(AboutPage page);

// The path of the file that a link in a document leads to, which is relative to that document.
QString LinkedDocument(const QString& document, const QString& link);

// The Markdown text of a document; of one whose file can't be read "Missing file: " and the file's name.
QString DocumentText(const QString& folder, const QString& document);

// Where the program's files live, and which libraries it has loaded: of those below libraryFolder and of the
// system's a list each. No libraries at all are told as a failure.
QString FolderListing(const QString& libraryFolder, const QStringList& libraries);

}  // namespace pixelgrove
