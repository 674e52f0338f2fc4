// Shaders of the service, loaded into the main window.
#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>
#include <optional>
#include <utility>

#include "support/Drops.h"
#include "support/TestService.h"
#include "ui/WindowFixture.h"

namespace pixelgrove {
namespace {

class LoadShaderTest : public WindowTest {
  protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<test::TestService>();
        server_->Put("shaders/Two1.json", kTwoStageProject);
    }
    static void TearDownTestSuite() {
        server_.reset();
        qunsetenv("PIXELGROVE_SERVICE_URL");
    }
    void SetUp() override {
        Serve("plain");
        WindowTest::SetUp();
        MakeDataFolders();
    }
    // The service of the windows that are made from now on.
    static void Serve(const char* mode) {
        qputenv("PIXELGROVE_SERVICE_URL", (server_->Http() + u'/' + QLatin1String(mode)).toLatin1());
    }
    std::string StatusText() const { return Status().toStdString(); }

    static std::unique_ptr<test::TestService> server_;
    test::ScratchFolders folders_;
};

std::unique_ptr<test::TestService> LoadShaderTest::server_;

TEST_F(LoadShaderTest, AnIdIsLoadedAndAFailureIsOneLineThatLeavesTheProject) {
    EXPECT_TRUE(window->OpenInitialProject(QStringLiteral("Two1")));
    EXPECT_EQ(Title().toStdString(), "Loaded.json - Pixelgrove");
    EXPECT_EQ(App()->project.projectFile, QString());  // nothing is saved over without a question
    EXPECT_FALSE(window->Projects().Load(QStringLiteral("Gone1")));
    EXPECT_EQ(
        StatusText().find("The shader \"Gone1\" can't be loaded: the service answers \"Shader not found\""),
        0u)
        << StatusText();
    EXPECT_EQ(StatusText().find('\n'), std::string::npos);
    EXPECT_EQ(Title().toStdString(), "Loaded.json - Pixelgrove");
}

TEST_F(LoadShaderTest, ADroppedPageOfAShaderLoadsIt) {
    const struct {
        QString page;
        bool isLoaded;
    } cases[] = {{server_->Http("/view/Two1?x=1"), true},
                 {QStringLiteral("https://www.shadertoy.com/view/Two1"), true},
                 {QStringLiteral("https://127.0.0.2/view/Two1"), false},
                 {server_->Http("/user/Two1"), false},
                 {QStringLiteral("ftp://127.0.0.1/view/Two1"), false}};
    for (const auto& c : cases) {
        window->Projects().New();
        QMimeData data;
        data.setUrls({QUrl(c.page)});
        test::Drop(window.get(), data);
        EXPECT_EQ(Title().startsWith(QStringLiteral("Loaded")), c.isLoaded) << qPrintable(c.page);
    }
}

TEST_F(LoadShaderTest, TextBecomesAProjectWithoutAFile) {
    const QString glsl = QStringLiteral("void mainImage(out vec4 c, in vec2 p) { c = vec4(1); }");
    const QString two = QStringLiteral("[%1,%1]").arg(QString::fromLatin1(kTwoStageProject));
    const QString refusal = QStringLiteral(
        "The clipboard holds no project, no address or id of a shader, and no GLSL text with a "
        "mainImage.");
    const struct {
        QString text, title, status;
    } cases[] = {
        {QString::fromLatin1(kTwoStageProject), QStringLiteral("Loaded"),
         QStringLiteral("Project \"Loaded\" taken from the clipboard.")},
        {glsl, QStringLiteral("Untitled"),
         QStringLiteral("GLSL text taken from the clipboard as the Image stage.")},
        {QStringLiteral(" https://www.shadertoy.com/view/Two1\n"), QStringLiteral("Loaded"),
         QStringLiteral("Shader \"Two1\" loaded.")},
        {two, QStringLiteral("Loaded"), QStringLiteral("Shader \"Loaded\" taken from the clipboard.")},
        {two, QStringLiteral("*opened"), QStringLiteral("No shader was chosen of the 2 in the clipboard.")},
        {QStringLiteral("Two1 and more"), QStringLiteral("*opened"), refusal},
        {QStringLiteral("{\"Error\":\"mainImage(\"}"), QStringLiteral("*opened"), refusal},
        {QStringLiteral(" \n"), QStringLiteral("*opened"), QStringLiteral("The clipboard holds no text.")},
    };
    answer = true;
    std::optional<size_t> choice = 1;
    window->Projects().chooseShader = [&choice](const FoundShaders& found) {
        EXPECT_EQ(found.shaders.size(), 2u);
        return std::exchange(choice, std::nullopt);
    };
    const QString mine = folder.filePath(QStringLiteral("opened.json"));
    ASSERT_TRUE(WriteWholeFile(mine, kTwoStageProject));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        ASSERT_TRUE(window->Projects().Load(mine));
        ReplaceText(QStringLiteral("mine"));
        QGuiApplication::clipboard()->setText(c.text);
        questions = 0;
        Run(kCmdPasteProject);
        EXPECT_EQ(Status().toStdString(), c.status.toStdString());
        EXPECT_EQ(Title().toStdString(), (c.title + QStringLiteral(".json - Pixelgrove")).toStdString());
        const bool isTaken = !c.title.startsWith(u'*');
        EXPECT_EQ(App()->project.projectFile, isTaken ? QString() : mine);
        EXPECT_EQ(Editor()->toPlainText() == QStringLiteral("mine"), !isTaken);
        EXPECT_EQ(questions, isTaken || c.text == two ? 1 : 0);
    }
    answer = false;
    Run(kCmdNew);
    ReplaceText(QStringLiteral("mine"));
    QGuiApplication::clipboard()->setText(glsl);
    Run(kCmdPasteProject);
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("mine"));
}

TEST_F(LoadShaderTest, ADroppedTextIsCopiedNeverMoved) {
    QMimeData data;
    data.setText(QString::fromLatin1(kTwoStageProject));
    for (const Qt::DropActions offered : {Qt::DropActions(Qt::MoveAction), Qt::CopyAction | Qt::MoveAction}) {
        const bool canCopy = offered.testFlag(Qt::CopyAction);
        EXPECT_EQ(test::Drop(window.get(), data, offered), canCopy ? Qt::CopyAction : Qt::IgnoreAction);
        EXPECT_EQ(Title().startsWith(QStringLiteral("Loaded")), canCopy);
    }
}

// The service never answers here: what happens meanwhile ends the load.
TEST_F(LoadShaderTest, DuringALoadCommandsWaitOthersAreRefusedAndAClosingEndsIt) {
    Serve("hang");
    MakeWindow({});
    window->PostCommand(kCmdNextStage, 0);
    bool isRefused = false;
    bool hasClosed = false;
    QObject::connect(window.get(), &MainWindow::Closed, [&] { hasClosed = true; });
    QTimer::singleShot(0, window.get(), [&] {
        isRefused = !window->Projects().Load(FileWith(kTwoStageProject));
        window->close();
        EXPECT_FALSE(hasClosed);
    });
    EXPECT_FALSE(window->Projects().Load(QStringLiteral("Two1")));
    EXPECT_TRUE(isRefused);
    EXPECT_EQ(Title().toStdString(), "Untitled.json - Pixelgrove");
    EXPECT_TRUE(PumpUntil([&] { return hasClosed; }));
}

}  // namespace
}  // namespace pixelgrove
