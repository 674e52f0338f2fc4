// The palette browser: what it lists and paints, how a palette is picked, and what loading one changes.
#include "ui/palettes/PaletteBrowser.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QTimer>
#include <QTreeView>

#include "WindowFixture.h"
#include "support/Drops.h"
#include "ui/PaletteCommands.h"

namespace pixelgrove {
namespace {

// A palette file of these colours, three bytes each.
QByteArray Counted(const QByteArray& colours) {
    return QByteArray("\x00\x69\x00\x42", 4) + char(colours.size() / 3) + QByteArray(3, '\0') + colours;
}

const QByteArray kRedBlue = Counted(QByteArray("\xFF\x00\x00\x00\x00\xFF", 6));
const QByteArray kGreen = Counted(QByteArray("\x00\xFF\x00", 3));
const QRgb kRed = 0xFFFF0000, kBlue = 0xFF0000FF, kGreenPixel = 0xFF00FF00;

class PaletteBrowserTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!qApp) return;
        Make("b two.PAL", kRedBlue);
        Make("A.cols", kGreen);
        Make("c.pal", "neither form");
        Make("d.pal", Counted({}));
        Make("pal.txt", kGreen);
        ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("more.pal")));
        Make("more.pal/e.pal", kGreen);
    }
    void TearDown() override {
        browser.reset();
        DisplayTest::TearDown();
    }
    void Make(const char* name, const QByteArray& bytes) {
        ASSERT_TRUE(WriteWholeFile(folder.filePath(QLatin1String(name)), bytes));
    }
    void Open(PaletteBrowserSetup setup = {}) {
        setup.folder = folder.path();
        browser = std::make_unique<PaletteBrowser>(nullptr, setup, memory);
        browser->dialogs.askForFiles = [this](const FileQuestion& question) {
            asked = question;
            return files;
        };
        browser->dialogs.askForFolder = [this](const FileQuestion& question) {
            asked = question;
            return files.value(0);
        };
    }
    // What the gesture does in the browser that waits makes it end; whether that was with a choice.
    bool Exec(const std::function<void()>& gesture) {
        QTimer::singleShot(0, browser.get(), [this, gesture] {
            EXPECT_TRUE(PumpUntil([this] { return browser->isActiveWindow(); }));
            gesture();
            EXPECT_FALSE(browser->isVisible());
            if (browser->isVisible()) browser->Done(false);
        });
        return browser->Exec();
    }
    template <typename W>
    W* Control(const char* name) const {
        return browser->findChild<W*>(QLatin1String(name));
    }
    QTreeView& List() const { return *Control<QTreeView>("paletteList"); }
    void Click(const char* name) const { QTest::mouseClick(Control<QWidget>(name), Qt::LeftButton); }
    void Select(int row) const {
        List().selectionModel()->select(List().model()->index(row, 0),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    std::string Names() const {
        QStringList names;
        for (int row = 0; row < List().model()->rowCount(); ++row)
            names.append(List().model()->index(row, 0).data().toString());
        return names.join(u' ').toStdString();
    }
    std::string Folder() const {
        return QDir(folder.path()).relativeFilePath(Control<QLineEdit>("folderEdit")->text()).toStdString();
    }
    // Of the row's preview, that far from its left edge.
    QRgb Painted(int row, double part) const {
        const QRect cell = List().visualRect(List().model()->index(row, 1));
        const QImage image = List().viewport()->grab().toImage();
        const double scale = image.devicePixelRatio();
        return image.pixel(int((cell.left() + part * cell.width()) * scale), int(cell.center().y() * scale));
    }
    QString Path(const char* name) const { return folder.filePath(QLatin1String(name)); }

    QTemporaryDir folder;
    PaletteBrowserMemory memory;
    std::unique_ptr<PaletteBrowser> browser;
    QStringList files;
    FileQuestion asked;
};

TEST_F(PaletteBrowserTest, ShowsThePalettesOfItsFolder) {
    Open();
    browser->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(browser.get()));
    EXPECT_EQ(Names(), "A.cols b two.PAL c.pal d.pal");
    EXPECT_EQ(Folder(), ".");
    EXPECT_EQ(Painted(0, 0.9), kGreenPixel);
    EXPECT_EQ(Painted(1, 0.45), kRed);
    EXPECT_EQ(Painted(1, 0.55), kBlue);
    const QRgb blank = Painted(2, 0.5);
    EXPECT_EQ(Painted(3, 0.5), blank);
    Control<QCheckBox>("interpolateCheck")->click();
    EXPECT_TRUE(memory.isInterpolated);
    for (const double part : {0.45, 0.55}) {
        EXPECT_NEAR(qRed(Painted(1, part)), 255 * (1 - part), 6);
        EXPECT_NEAR(qBlue(Painted(1, part)), 255 * part, 6);
    }
    EXPECT_EQ(Painted(2, 0.5), blank);

    for (const QSize& size : {QSize(900, 500), QSize(500, 300)}) {
        browser->ResizeClient(size);
        const int whole = List().viewport()->width();
        ASSERT_TRUE(PumpUntil([&] { return List().header()->length() == List().viewport()->width(); }));
        EXPECT_NEAR(List().header()->sectionSize(0), List().viewport()->width() * 0.15, 1) << whole;
    }
    Open();
    EXPECT_TRUE(Control<QCheckBox>("interpolateCheck")->isChecked());
}

TEST_F(PaletteBrowserTest, IsReadWhenItComesInSight) {
    Open();
    files = QStringList(500, Path("A.cols"));
    Click("selectButton");
    browser->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(browser.get()));
    EXPECT_EQ(Painted(0, 0.4), kGreenPixel);
    Make("A.cols", kRedBlue);
    List().scrollToBottom();
    EXPECT_EQ(Painted(499, 0.4), kRed);
    List().scrollToTop();
    EXPECT_EQ(Painted(0, 0.4), kGreenPixel) << "read once";
}

TEST_F(PaletteBrowserTest, ARowIsPickedByMouseAndKeys) {
    const auto press = [this](Qt::Key key) { QTest::keyClick(&List(), key); };
    const auto pick = [this](const std::function<void()>& gesture) {
        Open();
        return Exec(gesture) ? QFileInfo(browser->Choice().value(0)).fileName().toStdString() : "none";
    };
    EXPECT_EQ(pick([&] {
                  const QPoint at = List().visualRect(List().model()->index(1, 1)).center();
                  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, at);
                  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, at);
              }),
              "b two.PAL");
    EXPECT_EQ(pick([&] { press(Qt::Key_Down), press(Qt::Key_Return); }), "A.cols") << "the first key";
    EXPECT_EQ(pick([&] { press(Qt::Key_End), press(Qt::Key_Up), press(Qt::Key_Return); }), "c.pal");
    EXPECT_EQ(pick([&] { QTest::keyClicks(&List(), QStringLiteral("c.")), press(Qt::Key_Return); }), "c.pal");
    EXPECT_EQ(pick([&] { Select(3), Click("acceptButton"); }), "d.pal");
    EXPECT_EQ(pick([&] { Click("acceptButton"); }), "none") << "nothing is selected";
    EXPECT_EQ(pick([&] { Select(1), press(Qt::Key_Escape); }), "none");
    EXPECT_EQ(pick([&] { Select(1), Click("cancelButton"); }), "none");
}

TEST_F(PaletteBrowserTest, FilesAndFoldersTakeTheListsPlace) {
    const auto drop = [this](const QStringList& paths) {
        EXPECT_EQ(test::DropFiles(browser.get(), paths), paths.isEmpty() ? Qt::IgnoreAction : Qt::CopyAction);
    };
    Open({.selectsSeveral = true});
    drop({Path("pal.txt"), Path("absent.pal"), Path("more.pal/e.pal"), Path("c.pal")});
    EXPECT_EQ(Names(), "pal.txt e.pal c.pal");
    EXPECT_EQ(Folder(), ".");
    Select(2);
    Select(0);
    EXPECT_EQ(browser->Choice(),
              QStringList({folder.path(), QStringLiteral("pal.txt"), QStringLiteral("c.pal")}));
    Select(1);
    EXPECT_EQ(browser->Choice().value(2), Path("more.pal/e.pal")) << "from elsewhere";
    drop({});
    EXPECT_EQ(Names(), "pal.txt e.pal c.pal");
    drop({Path("more.pal")});
    EXPECT_EQ(Names(), "e.pal");
    EXPECT_EQ(Folder(), "more.pal");
    EXPECT_TRUE(browser->Choice().isEmpty());

    const auto open = [this](PaletteSource source, const char* text) {
        Open({.source = source});
        EXPECT_EQ(Control<QPushButton>("selectButton")->text(), QLatin1String(text));
        files.clear();
        Click("selectButton");
        EXPECT_EQ(Names(), "A.cols b two.PAL c.pal d.pal") << "cancelled";
        EXPECT_EQ(asked.folder, folder.path());
    };
    open(PaletteSource::Folder, "Folder...");
    EXPECT_EQ(asked.caption, QStringLiteral("Select Palette Folder"));
    files = {Path("more.pal")};
    Click("selectButton");
    EXPECT_EQ(Names(), "e.pal");
    open(PaletteSource::Files, "Files...");
    open(PaletteSource::SelectFiles, "&Select Files");
    files = {Path("more.pal/e.pal"), Path("more.pal/e.pal")};
    Click("selectButton");
    EXPECT_EQ(Names(), "e.pal e.pal");
    EXPECT_EQ(Folder(), "more.pal");
    Open({.source = PaletteSource::Hidden});
    EXPECT_TRUE(Control<QPushButton>("selectButton")->isHidden());
}

class PaletteCommandsTest : public WindowTest {
  protected:
    // Opens the browser, takes its first row, and says which folder it showed.
    QString LoadFirst() {
        QString shown;
        QTimer::singleShot(0, qApp, [&shown] {
            PaletteBrowser* browser = nullptr;
            ASSERT_TRUE(PumpUntil([&browser] {
                browser = qobject_cast<PaletteBrowser*>(QApplication::activeModalWidget());
                return browser && browser->isActiveWindow();
            }));
            shown = browser->findChild<QLineEdit*>(QStringLiteral("folderEdit"))->text();
            auto* list = browser->findChild<QTreeView*>(QStringLiteral("paletteList"));
            QTest::keyClick(list, Qt::Key_Down);
            QTest::keyClick(list, Qt::Key_Return);
        });
        Run(kCmdLoadPalette);
        return shown;
    }
    static PaletteTable Table() { return App()->palette.table->Copy(); }
};

TEST_F(PaletteCommandsTest, APaletteIsLoadedAndListed) {
    const QStringList& recent = App()->recent.recentPalettes->entries;
    const PaletteTable before = Table();
    const QString installed = PathOf(PathId::ExeBase) + QStringLiteral("/Palettes");
    EXPECT_EQ(LoadFirst(), installed) << "the same place here, which isn't there";
    EXPECT_EQ(Table().serial, before.serial);

    ASSERT_TRUE(MakeFolder(PathOf(PathId::Palettes)));
    const QString first = dataFolders.Path("Palettes/a.pal"), bad = dataFolders.Path("Palettes/bad.pal");
    ASSERT_TRUE(WriteWholeFile(first, kRedBlue) && WriteWholeFile(bad, "bad"));
    App()->project.shaderModified = true;
    EXPECT_EQ(LoadFirst(), PathOf(PathId::Palettes));
    EXPECT_EQ(Status(), QStringLiteral("Palette loaded."));
    EXPECT_EQ(recent, QStringList(first));
    EXPECT_EQ(Table().serial, before.serial + 1);
    EXPECT_EQ(Table().count, 2048u);
    EXPECT_EQ(Table().colours[0], 0xFF0000u);
    EXPECT_EQ(Table().colours[1024], 0x7F007Fu);
    EXPECT_EQ(Table().colours[2047], 0x0000FFu);

    App()->recent.recentPalettes->entries = {bad, first};
    Run(kCmdRecentPaletteFirst);
    EXPECT_EQ(Status(), QStringLiteral("Error loading palette."));
    EXPECT_EQ(Table().serial, before.serial + 1);
    EXPECT_EQ(recent, QStringList({bad, first}));
    Run(kCmdRecentPaletteFirst + 1);
    EXPECT_EQ(Status(), QStringLiteral("Palette loaded."));
    EXPECT_EQ(recent, QStringList({first, bad}));
    EXPECT_EQ(questions, 0);

    // A palette without colours is black throughout.
    ASSERT_TRUE(WriteWholeFile(bad, Counted({})));
    EXPECT_TRUE(ApplyPalette(*App(), bad));
    EXPECT_EQ(Table().count, 2048u);
    EXPECT_EQ(Table().colours, (PaletteTable().colours));
}

}  // namespace
}  // namespace pixelgrove
