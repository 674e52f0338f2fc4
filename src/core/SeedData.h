// The data files that are installed with the program (layouts, colours, examples) and the user's copies of
// them.
//
// Main thread, after SetBaseFolders.
#pragma once

#include <QString>

namespace pixelgrove {

// Copies what is missing of the installed files into the data folder. For the first start: what the user
// deletes later is to stay deleted. Nothing happens in a build, where no such files are installed; failures
// are ignored.
void SeedDataFolder();

// Copies each file below `from` to the same place below `to`, unless something of that name is there.
void CopyMissingFiles(const QString& from, const QString& to);

}  // namespace pixelgrove
