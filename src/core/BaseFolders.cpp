#include "core/BaseFolders.h"

#include <QDir>
#include <array>

#include "platform/Environment.h"
#include "platform/Files.h"

namespace pixelgrove {

namespace {

constexpr size_t kPathCount = size_t(PathId::Count);
constexpr qsizetype kMaxPathLength = 259;

// By PathId.
constexpr const char* kTemplates[kPathCount] = {
    R"(%EXE_BASEFOLDER%)",
    R"(%DLL_BASEFOLDER%)",
    R"(%DAT_BASEFOLDER%)",
    R"(%DAT_BASEFOLDER%\Globals.XML)",
    R"(%DAT_BASEFOLDER%\Shaders)",
    R"(%DAT_BASEFOLDER%\Shaders\*.glsl)",
    R"(%DAT_BASEFOLDER%\Palettes)",
    R"(%DAT_BASEFOLDER%\UI)",
    R"(%DAT_BASEFOLDER%\ShaderToy)",
    R"(%DAT_BASEFOLDER%\ShaderToy\ShadertoyCache)",
    R"(%DAT_BASEFOLDER%\ShaderToy\Shaders)",
    R"(%DAT_BASEFOLDER%\ShaderToy\Shaders\*.json)",
    R"(%DAT_BASEFOLDER%\ShaderToy\Playlists)",
    R"(%DAT_BASEFOLDER%\ShaderToy\Playlists\*.playlist)",
};

struct FolderState {
    QString configurationType = QStringLiteral("Unknown");
    std::array<QString, kPathCount> paths;
    QString cacheRoot;

    FolderState() {
        for (size_t i = 0; i < kPathCount; ++i)
            paths[i] = QString::fromLatin1(kTemplates[i]);
    }
};

FolderState& State() {
    static FolderState state;
    return state;
}

QString WithoutTrailingSlashes(QString path) {
    while (path.endsWith(u'/'))
        path.chop(1);
    return path;
}

// The longest of the folders that holds the program, at any depth; empty when none does. The longest,
// because /usr holds /usr/local.
QString FolderThatHolds(const QStringList& folders, const QString& programPath) {
    QString best;
    for (const QString& given : folders) {
        const QString folder = WithoutTrailingSlashes(NormalizePath(given));
        if (folder.size() > best.size() && programPath.startsWith(folder + u'/')) best = folder;
    }
    return best;
}

}  // namespace

FolderChoice ChooseFolders(const QString& programPath, const QStringList& programFilesFolders,
                           const QString& applicationData) {
    const QString path = NormalizePath(programPath);
    const QString directory = WithoutTrailingSlashes(path.left(path.lastIndexOf(u'/') + 1));
    const QString product = QStringLiteral("/orrisfield/moirelane");

    FolderChoice choice;
    if (path.contains(QStringLiteral("D:/C/Projects/"), Qt::CaseInsensitive)) {
        choice.exe = directory;
        choice.dll = directory;
        choice.dat = QStringLiteral("D:/Moirelane");
        choice.configurationType = QStringLiteral("Debugging");
        return choice;
    }
    const QString installed = FolderThatHolds(programFilesFolders, path);
    if (!installed.isEmpty()) {
        // Made from the known folder, wherever below it the program runs from: shared files have one home.
        choice.exe = installed + QStringLiteral("/share") + product;
        choice.dat = WithoutTrailingSlashes(NormalizePath(applicationData)) + product;
        choice.configurationType = QStringLiteral("Installed\n");
    } else {
        choice.exe = directory;
        choice.dat = directory;
        choice.configurationType = QStringLiteral("Portable\n");
    }
    choice.dll = choice.exe + QStringLiteral("/DLL");
    return choice;
}

FolderChoice ProgramFolders() {
    return ChooseFolders(ProgramPath(), ProgramFilesFolders(), ApplicationDataFolder());
}

void SetBaseFolders(const FolderChoice& choice) {
    SetVariable("EXE_BASEFOLDER", choice.exe);
    SetVariable("DLL_BASEFOLDER", choice.dll);
    SetVariable("DAT_BASEFOLDER", choice.dat);

    FolderState& state = State();
    state.configurationType = choice.configurationType;
    for (size_t i = 0; i < kPathCount; ++i) {
        QString path = NormalizePath(ExpandVariables(QString::fromLatin1(kTemplates[i])));
        // Cut short, a path would name some other folder; an empty one makes file operations fail.
        if (path.size() > kMaxPathLength) path.clear();
        state.paths[i] = path;
    }
}

const QString& ConfigurationType() {
    return State().configurationType;
}

QString PathOf(PathId id) {
    return size_t(id) < kPathCount ? State().paths[size_t(id)] : QString();
}

QString CacheRoot() {
    const QString& root = State().cacheRoot;
    return root.isEmpty() ? PathOf(PathId::CacheRoot) : root;
}

void MakeDataFolders() {
    const QString data = PathOf(PathId::DatBase);
    if (!data.isEmpty()) QDir().mkpath(data);
    MakeFolder(PathOf(PathId::ServiceRoot));
    MakeCompressedFolder(PathOf(PathId::ProjectFiles));

    const QString root = PathOf(PathId::CacheRoot);
    State().cacheRoot = root;
    if (root.isEmpty()) return;
    MakeFolder(root);
    MakeCompressedFolder(root + u'/' + kCacheShaders);
    MakeFolder(root + u'/' + kCacheAssets);
    MakeCompressedFolder(root + u'/' + kCacheSearches);
}

}  // namespace pixelgrove
