#include "app/Startup.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <string>

#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "core/SeedData.h"
#include "platform/Files.h"
#include "support/ScratchFolders.h"

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
    CopyMissingFiles(from.path(), to.path());
    CopyMissingFiles(from.filePath(QStringLiteral("missing")), to.path());
    EXPECT_TRUE(QFileInfo(to.filePath(QStringLiteral("x"))).isSymbolicLink());
    EXPECT_EQ(ReadWholeFile(to.filePath(QStringLiteral("a/y"))), QByteArray("edited"));
    EXPECT_EQ(ReadWholeFile(to.filePath(QStringLiteral("a/b/z"))), QByteArray("installed"));
}

// The order of the steps, each with the records that stand then: lists, palette, documents, includes.
TEST(Startup, RunsItsStepsInOrder) {
    std::string order;
    const auto step = [&order](const char* name) {
        return [&order, name] {
            const AppState& app = *App();
            order += name;
            order += app.recentFiles && app.recentPlaylists ? " l" : " -";
            order += app.sharedPalette ? 'p' : '-';
            order += app.documents[kStageImage].hasText ? 'd' : '-';
            order += app.includeContext ? "i\n" : "-\n";
        };
    };
    StartupSteps steps;  // without registerWindows: a step may be missing
    steps.startAudio = [check = step("startAudio")] {
        check();
        for (const QString& folder : {kCacheShaders, kCacheAssets, kCacheSearches})
            EXPECT_TRUE(IsFolder(CacheRoot() + u'/' + folder));
        EXPECT_TRUE(IsFolder(PathOf(PathId::ProjectFiles)));
    };
    steps.loadSettings = step("loadSettings");
    steps.runMainDialog = [check = step("runMainDialog")] {
        App()->documents[kStageImage].hasText = true;
        App()->includeContext = std::make_unique<IncludeContext>();
        check();
    };
    steps.stopAudio = step("stopAudio");
    steps.saveSettings = step("saveSettings");
    steps.freeControls = step("freeControls");
    steps.freeWindows = step("freeWindows");
    steps.freeRecorderTable = step("freeRecorderTable");
    const test::ScratchFolders data;
    EXPECT_EQ(ApplicationMain(steps, data.Choice()), 0);
    EXPECT_EQ(App(), nullptr);
    EXPECT_EQ(order,
              "startAudio ----\nloadSettings l---\nrunMainDialog lpdi\nstopAudio lpdi\nsaveSettings lpdi\n"
              "freeControls lp-i\nfreeWindows lp-i\nfreeRecorderTable -p--\n");
}

[[noreturn]] void StartWithoutSharedMemory(const FolderChoice& folders) {
    // No file can be opened any more, so the block can't be made.
    const rlimit none{0, 0};
    setrlimit(RLIMIT_NOFILE, &none);
    bool wentOn = false;
    StartupSteps steps;
    steps.runMainDialog = [&] { wentOn = true; };
    steps.saveSettings = [&] { wentOn = true; };
    const int result = ApplicationMain(steps, folders);
    _exit(result == kExitNoSharedMemory && !wentOn && App() != nullptr ? 0 : 1);
}

TEST(Startup, WithoutSharedMemoryNothingMoreRuns) {
    const test::ScratchFolders data;
    EXPECT_EXIT(StartWithoutSharedMemory(data.Choice()), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace pixelgrove
