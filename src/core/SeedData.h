// The data files that are installed with the program (layouts, palettes, colours, examples) and the user's
// copies of them.
//
// Main thread, after SetBaseFolders.
#pragma once

#include <QString>

namespace pixelgrove {

// Where an installed program finds what came with it, whatever prefix it was installed to; nothing is there
// in a build.
QString InstalledDataFolder();

// The folder there, and beside a program that isn't installed, whose files are read where they lie: they
// change with the program.
inline const QString kHelpFolder = QStringLiteral("Help");

// Copies what is missing of the installed files into the data folder. For the first start: what the user
// deletes later is to stay deleted. Nothing happens in a build, where no such files are installed; failures
// are ignored.
void SeedDataFolder();

// Copies each file below `from` to the same place below `to`, unless something of that name is there. Those
// in its folder of the name `except` are left out.
void CopyMissingFiles(const QString& from, const QString& to, const QString& except = {});

}  // namespace pixelgrove
