// Source files, recent and dropped files, and where and what a project is saved from.
#include <QFile>
#include <functional>

#include "WindowFixture.h"
#include "platform/Files.h"
#include "render/RenderThread.h"
#include "ui/FileCommands.h"

namespace pixelgrove {
namespace {

const QString kRunning = QStringLiteral("void mainImage(out vec4 c, in vec2 p) { c = vec4(iTime); }\n");

class FileCommandsTest : public WindowTest {
  protected:
    static QByteArray BytesOf(const QString& path) { return ReadWholeFile(path).value_or("unreadable"); }
    QString Source(const QByteArray& bytes) { return FileWith(bytes, QStringLiteral("glsl")); }
    QString ImageText() const { return App()->project.documents[kStageImage].text; }
};

TEST_F(FileCommandsTest, ASourceFileReplacesTheShownStageAlone) {
    AddStage(App()->project, kStageCommon);
    ReplaceText(QStringLiteral("// line\n").repeated(300));
    Editor()->GoToLine(200);
    App()->project.documents[kStageImage].errorLines.lines = {2};
    App()->project.channels[kStageImage][1].kind = kChannelKeyboard;
    App()->project.shaderModified = false;

    Run(kCmdOpenFile);  // cancelled
    EXPECT_EQ(Status(), QStringLiteral("[ Image ] No errors."));
    EXPECT_FALSE(fileQuestion.forSaving);
    chosenPath = folder.filePath(QStringLiteral("absent.glsl"));
    Run(kCmdOpenFile);
    EXPECT_EQ(Status(), QStringLiteral("Error loading file."));
    EXPECT_EQ(Editor()->CaretLine(), 200);
    EXPECT_FALSE(App()->project.shaderModified);

    chosenPath = Source(QByteArray("\xE9 a\r\nb\rc\n") + QByteArray("// x\n").repeated(100));
    Run(kCmdOpenFile);
    EXPECT_EQ(Status(), QStringLiteral("File loaded."));
    EXPECT_TRUE(ImageText().startsWith(QStringLiteral("\u00E9 a\nb\nc\n// x")));
    EXPECT_EQ(Editor()->toPlainText(), ImageText());
    EXPECT_EQ(Editor()->CaretLine(), 1);
    EXPECT_FALSE(Editor()->IsErrorLine(2));
    EXPECT_EQ(App()->project.documents[kStageCommon].text, DefaultSource(kStageCommon));
    EXPECT_EQ(App()->project.channels[kStageImage][1].kind, uint32_t(kChannelKeyboard));
    EXPECT_EQ(Title(), QStringLiteral("*Untitled.json - Pixelgrove")) << "the project keeps its name";
    EXPECT_EQ(App()->recent.recentFiles->entries, QStringList(chosenPath));

    // Text ends at a zero byte; an empty file gives an empty stage.
    answer = true;
    for (const QByteArray& bytes : {QByteArray("ab\0cd", 5), QByteArray()}) {
        chosenPath = Source(bytes);
        Run(kCmdOpenFile);
        EXPECT_EQ(ImageText(), QString::fromLatin1(bytes.left(2)));
    }
}

TEST_F(FileCommandsTest, ASavedStageIsAnAsciiCopy) {
    ReplaceText(QStringLiteral("a\u00E9\u20AC\u00A0\U0001F600\n\tb"));
    chosenPath = folder.filePath(QStringLiteral("copy.glsl"));
    Run(kCmdSaveFileAs);
    EXPECT_TRUE(fileQuestion.forSaving);
    EXPECT_EQ(fileQuestion.defaultSuffix, QStringLiteral("glsl"));
    EXPECT_EQ(
        Status(),
        QStringLiteral("File saved.\nImage: 4 characters were saved as \"?\".\nOnly US-ASCII can be saved."));
    EXPECT_EQ(BytesOf(chosenPath), QByteArray("a?????\n\tb"));
    EXPECT_TRUE(App()->project.shaderModified) << "the project stays unsaved";
    EXPECT_EQ(Title(), QStringLiteral("*Untitled.json - Pixelgrove"));
    EXPECT_TRUE(App()->recent.recentFiles->entries.isEmpty());

    const QString saved = chosenPath;
    for (const QString& path : {folder.filePath(QStringLiteral("no/such/place.glsl")), folder.path(),
                                QStringLiteral("/dev/full"), QStringLiteral("/proc/copy.glsl")}) {
        chosenPath = path;
        for (const int command : {kCmdSaveFileAs, kCmdSaveProjectAs}) {
            window->SetStatusText({});
            Run(command);
            EXPECT_TRUE(Status().startsWith(QStringLiteral("Error saving file.\n")))
                << qPrintable(path) << command << qPrintable(Status());
        }
    }
    EXPECT_TRUE(App()->project.shaderModified);
    EXPECT_EQ(App()->project.fileName, QStringLiteral("Untitled.json"));
    ReplaceText({});
    chosenPath = saved;
    Run(kCmdSaveFileAs);
    EXPECT_EQ(Status(), QStringLiteral("Error saving file.")) << "an empty text";
    EXPECT_EQ(BytesOf(saved), QByteArray("a?????\n\tb")) << "the old file stays";
}

TEST_F(FileCommandsTest, DroppedFiles) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("x.JSON.d")));
    const QString source = Source("// dropped"), project = FileWith(kTwoStageProject);
    const QString inside = folder.filePath(QStringLiteral("x.JSON.d/s.glsl"));
    ASSERT_TRUE(QFile::copy(source, inside));
    const QString absent = folder.filePath(QStringLiteral("absent.glsl"));
    const QString one = QStringLiteral("File loaded.");
    const QString first = QStringLiteral("First file loaded (drag-n-drop of multiple files not allowed).");
    const QString plain = DefaultSource(kStageImage), loaded = QStringLiteral("// dropped");
    const QString image = QStringLiteral("void mainImage(out vec4 c,in vec2 p){c=vec4(1);}");
    const QString untitled = QStringLiteral("Untitled.json");
    const struct {
        QStringList paths;
        QString status, name, text;
    } cases[] = {
        {{source}, one, source, loaded},
        {{source, project}, first, source, loaded},
        // The words come also where the file did not.
        {{absent}, one, untitled, plain},
        {{project, source}, one, project, image},
        {{inside}, QStringLiteral("Failed to load file."), untitled, plain},
        {{}, QStringLiteral("[ Image ] No errors."), untitled, plain},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(qPrintable(c.paths.join(u' ')));
        App()->project.shaderModified = false;
        MakeWindow({});
        window->Projects().DropFiles(c.paths);
        EXPECT_EQ(Status().section(u'\n', 0, 0), c.status);
        EXPECT_EQ(App()->project.fileName, c.name);
        EXPECT_EQ(ImageText(), c.text);
        EXPECT_TRUE(Title().endsWith(QFileInfo(c.name).fileName() + QStringLiteral(" - Pixelgrove")));
        EXPECT_EQ(Title().startsWith(u'*'), App()->project.shaderModified);
        EXPECT_EQ(App()->project.shaderModified, ImageText() == loaded);
    }
}

TEST_F(FileCommandsTest, RecentEntriesLoad) {
    const QString source = Source("// first"), other = Source("// second"),
                  project = FileWith(kTwoStageProject);
    App()->recent.recentFiles->entries = {source, other};
    App()->recent.recentProjects->entries = {project, folder.filePath(QStringLiteral("gone.json"))};
    answer = true;
    Run(kCmdRecentFileFirst + 1);
    EXPECT_EQ(Status(), QStringLiteral("File loaded."));
    EXPECT_EQ(ImageText(), QStringLiteral("// second"));
    EXPECT_EQ(App()->project.fileName, other);
    EXPECT_EQ(App()->recent.recentFiles->entries, QStringList({other, source})) << "moved to the top";
    ASSERT_TRUE(QFile::remove(source));
    Run(kCmdRecentFileFirst + 1);
    EXPECT_EQ(Status(), QStringLiteral("Error loading file."));
    EXPECT_EQ(App()->project.fileName, other);

    Run(kCmdRecentProjectFirst + 1);
    EXPECT_TRUE(Status().startsWith(QStringLiteral("Error loading project."))) << qPrintable(Status());
    Run(kCmdRecentProjectFirst);
    EXPECT_EQ(Status(), QStringLiteral("Project loaded."));
    EXPECT_EQ(App()->project.fileName, project);
    EXPECT_FALSE(App()->project.shaderModified);

    const int before = questions;
    App()->project.shaderModified = true;
    for (const int absent : {kCmdRecentFileFirst + 2, kCmdRecentProjectFirst + 9, kCmdRecentPaletteFirst + 0})
        Run(absent);
    EXPECT_EQ(questions, before);
    EXPECT_EQ(Status(), QStringLiteral("Project loaded."));
}

TEST_F(FileCommandsTest, AProjectOpenedByHandIsRecentAndOneSavedIsNot) {
    chosenPath = FileWith(kTwoStageProject);
    const QString project = chosenPath;
    Run(kCmdOpenProject);
    EXPECT_EQ(App()->recent.recentProjects->entries, QStringList(project));
    chosenPath = folder.filePath(QStringLiteral("saved.json"));
    Run(kCmdSaveProjectAs);
    EXPECT_EQ(fileQuestion.folder, folder.path());
    EXPECT_EQ(fileQuestion.fileName, QFileInfo(project).fileName());
    EXPECT_EQ(App()->recent.recentProjects->entries, QStringList(project));

    // A project isn't suggested to go over a source file.
    window->Projects().DropFiles({Source("// s")});
    Run(kCmdSaveProjectAs);
    EXPECT_TRUE(fileQuestion.fileName.endsWith(QStringLiteral(".json"))) << qPrintable(fileQuestion.fileName);
}

TEST_F(FileCommandsTest, SavingWritesWhatIsEditedToTheProjectsOwnFile) {
    const auto savesTo = [this](const QString& path, const QByteArray& text) {
        fileQuestion = FileQuestion();
        Run(kCmdSaveProject);
        EXPECT_FALSE(fileQuestion.forSaving) << "no question";
        EXPECT_EQ(Title(), QFileInfo(path).fileName() + QStringLiteral(" - Pixelgrove"));
        EXPECT_TRUE(BytesOf(path).contains(text)) << text.constData();
    };
    // A project without an Image stage, into which one is typed.
    const QByteArray twoStages = kTwoStageProject;
    const QString first = FileWith(
        QByteArray(twoStages).replace("\"Image\"", "\"Buffer A\"").replace("\"image\"", "\"buffer\""));
    const QString second = FileWith(twoStages);
    chosenPath = first;
    Run(kCmdOpenProject);
    ReplaceText(kRunning);
    if (App()->display.openGlOk) {
        ASSERT_TRUE(PlayUntilRunning());
        EXPECT_EQ(player.currentRun->request.project.stages[kStageImage].kind, kStageImage);
    }
    ReplaceText(QStringLiteral("// edited during the run"));
    savesTo(first, "// edited during the run");
    chosenPath = second;
    Run(kCmdOpenProject);
    ReplaceText(QStringLiteral("// another project"));
    savesTo(second, "// another project");
    Run(kCmdStop);
    // A source file gives the window its name and the stage its text; the project's file stays what it was.
    window->Projects().DropFiles({Source("// dropped")});
    savesTo(second, "// dropped");
    // A file whose name could be a service's id.
    QDir::setCurrent(folder.path());
    ASSERT_TRUE(QFile::copy(second, QStringLiteral("p.json")));
    ASSERT_TRUE(window->Projects().Load(QStringLiteral("p.json")));
    QDir::setCurrent(QStringLiteral("/"));
    savesTo(folder.filePath(QStringLiteral("p.json")), "// dropped");

    // New ones, those of the service, and those of which the file holds more have none.
    ShaderProject project;
    const std::function<void()> makers[] = {
        [this] { Run(kCmdNew); },
        [&] { AdoptProject(App()->project, project, QStringLiteral("XsXXDn")); },
        [&] {
            window->Projects().Load(FileWith(QByteArray(twoStages).replace("Loaded", QByteArray(200, 'n'))));
        },
        [&] { window->Projects().Load(FileWith(QByteArray(twoStages).replace("}]}}", "},7]}}"))); },
    };
    chosenPath.clear();
    for (const std::function<void()>& make : makers) {
        make();
        fileQuestion = FileQuestion();
        Run(kCmdSaveProject);
        EXPECT_TRUE(fileQuestion.forSaving) << &make - makers;
    }
    EXPECT_EQ(Status(),
              QStringLiteral("Project loaded.\nThe project is damaged; the stages behind the damage "
                             "are missing."));
}

TEST_F(FileCommandsTest, CharactersThatFilesCannotHoldAreToldOfAndStay) {
    const QString text = QStringLiteral("// \u5199\u771F \u20AC \U0001F600");
    chosenPath = FileWith(QByteArray(kTwoStageProject).replace("// shared", "\\u5199 // \\ud83d\\ude00"));
    Run(kCmdOpenProject);
    EXPECT_EQ(Status(), QStringLiteral("Project loaded.\nCommon: 2 characters will be saved as \"?\".\nOnly "
                                       "Windows-1252 can be saved."));
    ReplaceText(text);
    Run(kCmdSaveProject);
    EXPECT_EQ(Status(), QStringLiteral("File saved.\nCommon: 2 characters were saved as \"?\".\nImage: 3 "
                                       "characters were saved as \"?\".\nOnly Windows-1252 can be saved."));
    EXPECT_TRUE(BytesOf(chosenPath).contains("// ?? \x80 ??"));
    EXPECT_EQ(ImageText(), text);
    EXPECT_EQ(App()->project.documents[kStageCommon].text, QStringLiteral("\u5199 // \U0001F600"));
    Run(kCmdOpenProject);
    EXPECT_EQ(Status(), QStringLiteral("Project loaded."));
}

}  // namespace
}  // namespace pixelgrove
