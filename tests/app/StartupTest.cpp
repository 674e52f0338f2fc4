#include "app/Startup.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "core/SeedData.h"
#include "look/UiColours.h"
#include "platform/Files.h"
#include "support/ScratchFolders.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {
namespace {

TEST(BaseFolders, ChoosesByTheProgramsPlace) {
    const QStringList known = {QStringLiteral("/usr"), QStringLiteral("/usr/local/"), QStringLiteral("/opt"),
                               QString()};
    const QString data = QStringLiteral("/home/u/.local/share//");
    const struct {
        const char* program;
        const char* folders;  // exe, dll, dat
        const char* type;
    } rows[] = {
        // /usr holds /usr/local too: the nearer one counts.
        {"/usr/local/bin/x/y",
         "/usr/local/share/orrisfield/moirelane /usr/local/share/orrisfield/moirelane/DLL "
         "/home/u/.local/share/orrisfield/moirelane",
         "Installed\n"},
        {"/home/u/app/pixelgrove", "/home/u/app /home/u/app/DLL /home/u/app", "Portable\n"},
        // Only a folder's whole name counts, and only at the start.
        {"/usrx/bin/p", "/usrx/bin /usrx/bin/DLL /usrx/bin", "Portable\n"},
        {"/home/u/usr/bin/p", "/home/u/usr/bin /home/u/usr/bin/DLL /home/u/usr/bin", "Portable\n"},
        {"/p", " /DLL ", "Portable\n"},
        {R"(D:\C\Projects\x\p.exe)", "D:/C/Projects/x D:/C/Projects/x D:/Moirelane", "Debugging"},
        {R"(/usr/d:\c\PROJECTS\p)", "/usr/d:/c/PROJECTS /usr/d:/c/PROJECTS D:/Moirelane", "Debugging"},
        {R"(D:\C\Projects)", "D:/C D:/C/DLL D:/C", "Portable\n"},
    };
    for (const auto& row : rows) {
        const FolderChoice choice = ChooseFolders(QString::fromLatin1(row.program), known, data);
        const QStringList folders = {choice.exe, choice.dll, choice.dat};
        EXPECT_EQ(folders.join(u' '), QLatin1String(row.folders)) << row.program;
        EXPECT_EQ(choice.configurationType, QLatin1String(row.type)) << row.program;
    }
}

TEST(SeedData, CopiesOnlyWhatIsMissing) {
    const QTemporaryDir from, to;
    const auto write = [](const QTemporaryDir& folder, const char* name, const char* text) {
        return WriteWholeFile(folder.filePath(QLatin1String(name)), text);
    };
    ASSERT_TRUE(QDir(from.path()).mkpath(QStringLiteral("a/b")) &&
                QDir(to.path()).mkdir(QStringLiteral("a")));
    ASSERT_TRUE(write(from, "x", "installed") && write(from, "a/y", "installed") &&
                write(from, "a/b/z", "installed"));
    ASSERT_TRUE(write(to, "a/y", "edited") &&
                QFile::link(QStringLiteral("/gone"), to.filePath(QStringLiteral("x"))));
    ASSERT_TRUE(QDir(from.path()).mkdir(kHelpFolder) && write(from, "Help/h", "stays"));
    CopyMissingFiles(from.path(), to.path(), kHelpFolder);
    CopyMissingFiles(from.filePath(QStringLiteral("missing")), to.path());
    EXPECT_FALSE(QFileInfo::exists(to.filePath(kHelpFolder)));
    EXPECT_TRUE(QFileInfo(to.filePath(QStringLiteral("x"))).isSymbolicLink());
    EXPECT_EQ(ReadWholeFile(to.filePath(QStringLiteral("a/y"))), QByteArray("edited"));
    EXPECT_EQ(ReadWholeFile(to.filePath(QStringLiteral("a/b/z"))), QByteArray("installed"));
}

QByteArray SavedSettings(const test::ScratchFolders& folder) {
    return ReadWholeFile(folder.Path("PixelgroveGlobals.XML")).value_or("");
}

bool WriteSettings(const test::ScratchFolders& folder) {
    return WriteWholeFile(folder.Path("PixelgroveGlobals.XML"),
                          "\n<Globals><FPSTarget>77</FPSTarget><LockWin>1</LockWin></Globals>\n"
                          "<RecentFiles><File_00>/</File_00></RecentFiles>");
}

TEST(Startup, TheMainWindowRunsBetweenLoadingAndSaving) {
    const test::ScratchFolders folder;
    ASSERT_TRUE(WriteSettings(folder) &&
                WriteWholeFile(folder.Path("Globals.XML"), "\n<UIColors><Timer>7</Timer></UIColors>"));
    bool ran = false;
    const auto run = [&](const StartedWorkbench& started) {
        ran = true;
        AppState& app = *App();
        EXPECT_EQ(app.run->fpsTarget, 77u);
        EXPECT_EQ(app.recent.recentFiles->entries, QStringList({QStringLiteral("/")}));
        EXPECT_TRUE(app.recent.recentProjects && app.recent.recentPalettes && app.recent.recentPlaylists &&
                    app.palette.shared);
        EXPECT_TRUE(Windows().Layout().lockWindows);
        EXPECT_EQ(started.colours[UiColour::Timer], 7u);
        for (const QString& name : {kCacheShaders, kCacheAssets, kCacheSearches})
            EXPECT_TRUE(IsFolder(CacheRoot() + u'/' + name));
        EXPECT_TRUE(IsFolder(PathOf(PathId::ProjectFiles)));
        EXPECT_TRUE(PathOf(PathId::ProjectFiles).startsWith(folder.Path("")));
        app.project.documents[kStageImage].hasText = true;
        app.project.includeContext = std::make_unique<IncludeContext>();
        app.run->fpsTarget = 78;
    };
    EXPECT_EQ(ApplicationMain(folder.Choice(), run), 0);
    EXPECT_TRUE(ran);
    // What the settings tell of still stood when they were written.
    const QByteArray saved = SavedSettings(folder);
    for (const char* element : {"<FPSTarget>78<", "<LockWin>1<", "<File_00>/<"})
        EXPECT_TRUE(saved.contains(element)) << saved.constData();
    EXPECT_EQ(App(), nullptr);
    EXPECT_FALSE(Windows().Layout().lockWindows);
}

[[noreturn]] void StartWithoutSharedMemory(const test::ScratchFolders& folder) {
    // No file can be opened any more, so the block can't be made.
    const rlimit none{0, 0};
    setrlimit(RLIMIT_NOFILE, &none);
    bool wentOn = false;
    const int result = ApplicationMain(folder.Choice(), [&](const StartedWorkbench&) { wentOn = true; });
    _exit(result == kExitNoSharedMemory && !wentOn && App() != nullptr ? 0 : 1);
}

TEST(Startup, WithoutSharedMemoryNothingMoreRuns) {
    const test::ScratchFolders folder;
    ASSERT_TRUE(WriteSettings(folder));
    const QByteArray before = SavedSettings(folder);
    EXPECT_EXIT(StartWithoutSharedMemory(folder), testing::ExitedWithCode(0), "");
    EXPECT_EQ(SavedSettings(folder), before);
}

}  // namespace
}  // namespace pixelgrove
