#include "library/widgets/BrowserWindow.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTreeView>
#include <QUrl>

#include "commands/Commands.h"
#include "library/widgets/ProgressLine.h"
#include "platform/Files.h"
#include "support/DisplayTest.h"
#include "support/ScratchFolders.h"
#include "support/TestService.h"

namespace pixelgrove {
namespace {

constexpr int kShaders = 20;

QString Id(int index) {
    return QStringLiteral("Sh%1").arg(index, 2, 10, QLatin1Char('0'));
}

// Names run one way, likes the other.
QByteArray Shader(int index) {
    return QStringLiteral(
               R"({"Shader":{"ver":"0.1","info":{"id":"%1","date":"0","viewed":0,"name":"Name %1",)"
               R"("username":"Ann & Bob","description":"two\nlines","likes":%2,"published":0,"flags":0,)"
               R"("usePreview":0,"hasliked":0,"tags":[]},"renderpass":[]}})")
        .arg(Id(index))
        .arg(index)
        .toLatin1();
}

class BrowserWindowTest : public DisplayTest {
  protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<test::TestService>();
        QStringList ids;
        for (int i = 0; i < kShaders; ++i) {
            ids.append(u'"' + Id(i) + u'"');
            server_->Put(qPrintable(QStringLiteral("shaders/%1.json").arg(Id(i))), Shader(i));
        }
        server_->Put("searches/two+words",
                     "{\"Shaders\":20,\"Results\":[" + ids.join(u',').toLatin1() + "]}");
        server_->Put("searches/none", "{\"Shaders\":0}");
    }
    static void TearDownTestSuite() { server_.reset(); }

    void SetUp() override {
        DisplayTest::SetUp();
        if (!qApp) return;
        ASSERT_TRUE(server_->IsReady());
        MakeDataFolders();
        Open();
    }
    void TearDown() override {
        browser_.reset();
        DisplayTest::TearDown();
    }
    void Open(const char* mode = "plain") {
        browser_.reset();
        const QString base = server_->Http() + u'/' + QLatin1String(mode);
        browser_ = std::make_unique<BrowserWindow>(
            ChooseService(base, {}), memory_, &recent_,
            BrowserRoads{.load =
                             [this](const QString& id) {
                                 told_ += "load " + id.toStdString() + ";";
                                 if (closesInLoad_) browser_.reset();
                             },
                         .runCommand = [this](int id) { told_ += "run " + std::to_string(id) + ";"; },
                         .say = [this](const QString& text) { told_ += "say " + text.toStdString() + ";"; }});
        browser_->setAttribute(Qt::WA_DeleteOnClose, false);
        browser_->dialogs.askForFile = [this](const FileQuestion&) { return chosen_; };
        browser_->dialogs.openUrl = [this](const QUrl& url) {
            told_ += "open " + url.toString(QUrl::FullyEncoded).toStdString() + ";";
        };
        browser_->show();
        browser_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(browser_.get()));
    }

    template <typename W>
    W* Control(const char* name) const {
        return browser_->findChild<W*>(QLatin1String(name));
    }
    QTreeView& List() const { return *Control<QTreeView>("resultList"); }
    int Rows() const { return List().model()->rowCount(); }
    std::string Cell(int row, int column) const {
        return List().model()->index(row, column).data().toString().toStdString();
    }
    std::string Status() const { return Control<QLabel>("statusLine")->text().toStdString(); }
    std::string Pages() const { return Control<QLabel>("pagesLabel")->text().toStdString(); }
    QLineEdit* Page() const { return Control<QWidget>("pageField")->findChild<QLineEdit*>(); }
    QPoint At(int row) const { return List().visualRect(List().model()->index(row, 1)).center(); }

    void BeginSearch(const char* text) const {
        Control<QComboBox>("searchCombo")->setEditText(QLatin1String(text));
        QTest::keyClick(Control<QComboBox>("searchCombo")->lineEdit(), Qt::Key_Return);
    }
    void Search(const char* text) const {
        BeginSearch(text);
        ASSERT_TRUE(PumpUntil([&] { return !Control<ProgressLine>("statusLine")->IsProgress(); }));
    }
    // Searches for all, until the rows on screen have their details.
    void SearchAll() const {
        Search("two words");
        ASSERT_TRUE(PumpUntil([&] { return Cell(0, 1) == "Name Sh00" && Cell(1, 1) == "Name Sh01"; }));
    }
    void SetOffline() const { Control<QCheckBox>("offlineCheck")->setChecked(true); }
    void ClickTitle(int column) const {
        QHeaderView& header = *List().header();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          {header.sectionViewportPosition(column) + 9, 5});
    }
    // The entries of the row's menu, which is open then.
    std::string OpenMenu(int row) {
        Q_EMIT List().customContextMenuRequested(At(row));
        std::string texts;
        for (const QAction* action : Menu().actions())
            texts += action->text().toStdString() + "\n";
        return texts;
    }
    static QMenu& Menu() { return *qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    QByteArray FileAt(const char* name) const { return ReadWholeFile(folders_.Path(name)).value_or("none"); }
    std::string Told() { return std::exchange(told_, {}); }

    static std::unique_ptr<test::TestService> server_;
    test::ScratchFolders folders_;
    BrowserMemory memory_;
    StringList recent_;
    QString chosen_;
    std::string told_;
    bool closesInLoad_ = false;
    std::unique_ptr<BrowserWindow> browser_;
};

std::unique_ptr<test::TestService> BrowserWindowTest::server_;

TEST_F(BrowserWindowTest, ASearchIsListedByPagesAndRowsFillThemselves) {
    SearchAll();
    EXPECT_EQ(Status(), "Searched Shadertoy and found 20 results.");
    EXPECT_EQ(Rows(), 16);
    EXPECT_EQ(Pages(), "of 2");
    EXPECT_EQ(Cell(0, 0) + "|" + Cell(0, 4) + "|" + Cell(0, 5), "Sh00|Ann & Bob|two lines");
    QTest::keyClick(Page(), Qt::Key_Up);
    EXPECT_EQ(Page()->text().toStdString(), "2");
    EXPECT_EQ(Cell(0, 0), "Sh16");
    ASSERT_TRUE(PumpUntil([&] { return Cell(3, 1) == "Name Sh19"; }));
    Page()->setText(QStringLiteral("1"));
    QTest::keyClick(Page(), Qt::Key_Return);
    EXPECT_EQ(Cell(15, 0), "Sh15");
    // The box of earlier searches is filled when the window opens.
    EXPECT_EQ(Control<QComboBox>("searchCombo")->count(), 0);
    Open();
    EXPECT_EQ(Control<QComboBox>("searchCombo")->itemText(0).toStdString(), "two words");
}

TEST_F(BrowserWindowTest, TheStatusLineTellsHowASearchEnded) {
    const struct {
        const char* mode;
        const char* text;
        const char* status;
    } cases[] = {{"plain", "none", "Searched Shadertoy and found 0 results."},
                 {"drop", "x", "Failed to connect to Shadertoy."},
                 {"page", "y", "Invalid data returned from Shadertoy."}};
    for (const auto& c : cases) {
        Open(c.mode);
        Search(c.text);
        EXPECT_EQ(Status(), c.status) << c.mode;
        EXPECT_EQ(Rows(), 0);
    }
    // A search that nobody answers is ended by the next one, by a playlist, and by closing.
    Open("hang");
    BeginSearch("z");
    SetOffline();
    Search("w");
    Control<QCheckBox>("offlineCheck")->setChecked(false);
    BeginSearch("z");
    chosen_ = folders_.Path("a.playlist");
    ASSERT_TRUE(WriteWholeFile(chosen_, "Sh03", nullptr));
    browser_->OpenPlaylist();
    EXPECT_EQ(Cell(0, 0), "Sh03");
    BeginSearch("z");
}

TEST_F(BrowserWindowTest, SortingFillsTheWholePageFirst) {
    SearchAll();
    ClickTitle(2);  // the highest first
    ASSERT_TRUE(PumpUntil([&] { return Cell(0, 0) == "Sh15"; }));
    EXPECT_EQ(Cell(15, 2), "0");
    ClickTitle(2);
    ASSERT_TRUE(PumpUntil([&] { return Cell(0, 0) == "Sh00"; }));
    ClickTitle(0);
    ClickTitle(0);
    ASSERT_TRUE(PumpUntil([&] { return Cell(0, 0) == "Sh15"; }));
}

TEST_F(BrowserWindowTest, TheCacheIsSearchedWithoutAServerAndEscapeKeepsWhatWasFound) {
    for (int i = 0; i < 1000; ++i) {
        QFile file(CacheRoot() + QStringLiteral("/Shaders/s%1_0.json").arg(i));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(Shader(i % kShaders)) > 0);
    }
    Open("hang");
    SetOffline();
    Search("\"Name Sh07\"");
    EXPECT_EQ(Status(), "Searched 1000 files and found 50 results.");
    EXPECT_EQ(Pages(), "of 1");
    ASSERT_TRUE(PumpUntil([&] { return Cell(0, 1) == "Name Sh07"; }));
    BeginSearch("Name");
    QTest::keyClick(&List(), Qt::Key_Escape);
    ASSERT_TRUE(PumpUntil([&] { return Status().starts_with("Searched 1000 files"); }));
    EXPECT_LT(Rows(), 1000);
}

TEST_F(BrowserWindowTest, ADoubleClickLoadsAndAutoRunRestarts) {
    SearchAll();
    const auto doubleClick = [this](const QPoint& at) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, at);
        EXPECT_EQ(Told(), "");  // not from within the list
        QCoreApplication::sendPostedEvents(browser_.get());
    };
    doubleClick(At(1));
    EXPECT_EQ(Told(), "load Sh01;");
    Control<QCheckBox>("autoRunCheck")->setChecked(true);
    doubleClick(At(2));
    EXPECT_EQ(Told(), "load Sh02;run " + std::to_string(kCmdRestart) + ";");
    closesInLoad_ = true;
    doubleClick(At(3));
    EXPECT_EQ(Told(), "load Sh03;");
    Open();
    Search("none");
    doubleClick({20, 20});
    EXPECT_EQ(Told(), "");
}

TEST_F(BrowserWindowTest, PlaylistsAreSavedOpenedAndAddedTo) {
    SearchAll();
    List().selectionModel()->select(List().model()->index(0, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(Rows(), 15);
    browser_->SavePlaylist();
    EXPECT_EQ(Told(), "say Error saving playlist.;");
    chosen_ = folders_.Path("a.playlist");
    browser_->SavePlaylist();
    EXPECT_TRUE(FileAt("a.playlist").startsWith("Sh01\nSh02\n"));
    EXPECT_EQ(recent_.entries, QStringList{chosen_});

    ASSERT_TRUE(WriteWholeFile(chosen_, "Sh05\r\n\nSh04\n", nullptr));
    browser_->OpenRecentPlaylist(0);
    EXPECT_EQ(Told(), "say Playlist loaded.;");
    ASSERT_TRUE(PumpUntil([&] { return Cell(1, 1) == "Name Sh04"; }));
    ASSERT_TRUE(WriteWholeFile(chosen_, QByteArray(21, 'x'), nullptr));
    browser_->OpenRecentPlaylist(0);
    EXPECT_EQ(Told(), "say Error loading playlist.;");
    EXPECT_EQ(Rows(), 0);
}

TEST_F(BrowserWindowTest, ARowsMenuLeadsToItsPagesAndPlaylists) {
    const QString list = folders_.Path("ShaderToy/Playlists/mine.playlist");
    ASSERT_TRUE(MakeFolder(folders_.Path("ShaderToy/Playlists")) && WriteWholeFile(list, "Sh09\n", nullptr));
    SearchAll();
    List().setCurrentIndex(List().model()->index(1, 0));
    EXPECT_EQ(OpenMenu(1),
              "View \"Name Sh01\" on Shadertoy\nView Ann && Bob's profile on Shadertoy\n"
              "Search for more shaders from Ann && Bob\nRemove selection from list\n\nAdd to Playlist\n");
    Menu().actions()[0]->trigger();
    Menu().actions()[1]->trigger();
    const std::string base = "open " + server_->Http().toStdString() + "/plain/";
    EXPECT_EQ(Told(), base + "view/Sh01;" + base + "user/Ann%20%26%20Bob;");
    QMenu* playlists = Menu().actions().last()->menu();
    ASSERT_EQ(playlists->actions().size(), 3);
    playlists->actions()[0]->trigger();
    EXPECT_EQ(FileAt("ShaderToy/Playlists/mine.playlist"), "Sh09\nSh01\r\n");
    Menu().close();
}

}  // namespace
}  // namespace pixelgrove
