// BaseFolders: where the program's files live, as three environment variables and a table of path templates.
//
// Main thread; PathOf may be called from any thread once SetBaseFolders has run.
#pragma once

#include <QString>

#include "platform/Environment.h"

namespace pixelgrove {

// Rows of the path table.
enum class PathId {
    ExeBase,
    DllBase,
    DatBase,
    ColourSettings,  // Globals.XML
    Shaders,
    ShaderPattern,  // Shaders/*.glsl
    Palettes,
    Layouts,      // UI
    ServiceRoot,  // ShaderToy
    CacheRoot,
    ProjectFiles,
    ProjectPattern,
    Playlists,
    PlaylistPattern,
    Count,
};

struct FolderChoice {
    QString exe, dll, dat;
    QString configurationType;  // "Debugging", "Portable\n" or "Installed\n"
};

// The choice by a program's path and the known folders, as a pure function, and that of the running program.
FolderChoice ChooseFolders(const QString& programPath, const QStringList& programFilesFolders,
                           const QString& applicationData);
FolderChoice ProgramFolders();

// Sets EXE_BASEFOLDER, DLL_BASEFOLDER and DAT_BASEFOLDER in the process environment, the configuration
// type, and expands the path table. Safe to run again.
void SetBaseFolders(const FolderChoice& choice = ProgramFolders());

// "Unknown" until SetBaseFolders has run.
const QString& ConfigurationType();

// The expanded path, at most 259 code units. Before SetBaseFolders: the template.
QString PathOf(PathId id);

// The cache root as start-up left it, and the names of its three subfolders.
QString CacheRoot();
inline const QString kCacheShaders = QStringLiteral("Shaders");
inline const QString kCacheAssets = QStringLiteral("Assets");
inline const QString kCacheSearches = QStringLiteral("Searches");

// Makes ShaderToy, its Shaders (compressed), the cache root, and the cache's Shaders (compressed), Assets,
// Searches (compressed), in this order; parents of the data folder are made first. Failures are ignored.
void MakeDataFolders();

}  // namespace pixelgrove
