// Shaders of the service, loaded into the main window.
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>

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
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &drop);
        QCoreApplication::sendPostedEvents(window.get());
        EXPECT_EQ(Title().startsWith(QStringLiteral("Loaded")), c.isLoaded) << qPrintable(c.page);
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
