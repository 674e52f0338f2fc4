// The About box: its pages, its links, and the check for a newer build while it lives.
#include "ui/about/AboutBox.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "WindowFixture.h"
#include "commands/MenuTable.h"
#include "core/BaseFolders.h"
#include "support/TestService.h"
#include "ui/about/PageView.h"

namespace pixelgrove {
namespace {

class AboutBoxTest : public WindowTest {
  protected:
    AboutBox* Box() const {
        const QList<AboutBox*> boxes = window->findChildren<AboutBox*>();
        EXPECT_LE(boxes.size(), 1);
        return boxes.isEmpty() ? nullptr : boxes.first();
    }
    static QTextBrowser* View(const AboutBox& box) {
        return box.findChild<QTextBrowser*>(QStringLiteral("pageText"));
    }
    static QString Text(const AboutBox& box) { return View(box)->toPlainText(); }
    static void Click(const AboutBox& box, const char* name) {
        auto* button = box.findChild<QPushButton*>(QString::fromLatin1(name));
        ASSERT_NE(button, nullptr) << name;
        button->click();
    }
    AboutBox& Open(const AboutSources& sources, AboutPage page) {
        return ShowAboutBox(*window, sources, slot, page);
    }

    // The documents as they lie where the program is installed.
    AboutBox& OpenDocuments(AboutPage page) {
        const QString source = QStringLiteral(PIXELGROVE_SOURCE_DIR);
        for (const QString& name : QDir(source + QStringLiteral("/data/Help")).entryList(QDir::Files))
            QFile::link(source + QStringLiteral("/data/Help/") + name, documents.filePath(name));
        QFile::link(source + QStringLiteral("/docs/guide"), documents.filePath(QStringLiteral("Guide")));
        return Open({.documents = documents.path(), .openUrl = window->Projects().dialogs.openUrl}, page);
    }

    QTemporaryDir documents;
    QPointer<AboutBox> slot;
};

TEST_F(AboutBoxTest, CommandsShowTheirPagesInOneBox) {
    EXPECT_EQ(Box(), nullptr);
    const std::pair<int, const char*> rows[] = {{kCmdHelp, "Missing file: Overview.md"},
                                                {kCmdLicense, "Missing file: License.md"},
                                                {kCmdAbout, "Missing file: About.md"}};
    for (const auto& [command, text] : rows) {
        Run(command);
        ASSERT_NE(Box(), nullptr);
        EXPECT_EQ(Text(*Box()), QLatin1String(text));
    }
    Click(*Box(), "updatesButton");
    EXPECT_EQ(Text(*Box()), QStringLiteral("No update address is set."));
    Click(*Box(), "foldersButton");
    EXPECT_TRUE(Text(*Box()).contains(u'\t' + PathOf(PathId::PlaylistPattern) + u'\n'));
    EXPECT_TRUE(Text(*Box()).contains(QStringLiteral("libQt6Core")));
    EXPECT_FALSE(Box()->findChild<QPushButton*>(QStringLiteral("propertiesButton"))->isVisible());
    for (const char* site : {"siteButton0", "siteButton4"})
        Click(*Box(), site);
    EXPECT_EQ(opened.join(u' '), QStringLiteral("https://thebookofshaders.com https://www.oneshader.net"));
    QTest::keyClick(View(*Box()), Qt::Key_Escape);
    EXPECT_TRUE(PumpUntil([this] { return Box() == nullptr; }));
}

TEST_F(AboutBoxTest, LinksOfTheDocumentsLeadToTheBrowser) {
    AboutBox& box = OpenDocuments(AboutPage::About);
    int links = 0;
    for (const AboutPage page : {AboutPage::About, AboutPage::License, AboutPage::Thanks}) {
        box.ShowPage(page);
        EXPECT_FALSE(Text(box).startsWith(QStringLiteral("Missing file"))) << int(page);
        for (QTextBlock block = View(box)->document()->begin(); block.isValid(); block = block.next())
            for (const auto& range : block.textFormats()) {
                if (!range.format.isAnchor()) continue;
                ++links;
                EXPECT_EQ(QUrl(range.format.anchorHref()).scheme(), QStringLiteral("https"));
            }
    }
    EXPECT_GT(links, 10);
    Q_EMIT View(box)->anchorClicked(QUrl(QStringLiteral("https://example.org/a")));
    EXPECT_EQ(opened, QStringList(QStringLiteral("https://example.org/a")));
}

TEST_F(AboutBoxTest, TheGuideIsWalkedBackAndForth) {
    AboutBox& box = OpenDocuments(AboutPage::Help);
    QTextBrowser& view = *View(box);
    // The page, and the line at its upper border.
    const auto place = [&] {
        const QTextBlock atTop = view.cursorForPosition(QPoint(60, 8)).block();
        return (view.document()->begin().text() + u'/' + atTop.text()).toStdString();
    };
    const std::string top = "Working with Pixelgrove/Working with Pixelgrove";
    EXPECT_EQ(place(), top);
    const struct {
        const char* link;  // or which button
        std::string place;
    } rows[] = {
        {"#the-main-window", "Working with Pixelgrove/The main window"},
        {"Stages.md#include-files", "Stages, channels and inputs/Include files"},
        {"backButton", "Working with Pixelgrove/The main window"},
        {"backButton", top},
        {"forwardButton", "Working with Pixelgrove/The main window"},
        {"forwardButton", "Stages, channels and inputs/Include files"},
        {"Nowhere.md", "Missing file: Nowhere.md/Missing file: Nowhere.md"},
        {"helpButton", top},
        {"backButton", "Missing file: Nowhere.md/Missing file: Nowhere.md"},
    };
    for (const auto& [link, expected] : rows) {
        if (QByteArrayView(link).endsWith("Button"))
            Click(box, link);
        else
            Q_EMIT view.anchorClicked(QUrl(QString::fromLatin1(link)));
        EXPECT_EQ(place(), expected) << link;
    }
    EXPECT_TRUE(opened.isEmpty());
    ASSERT_TRUE(PumpUntil([&box] { return box.isActiveWindow(); }));
    QTest::keyClick(&view, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(place(), rows[1].place);
    EXPECT_EQ(box.findChild<QPushButton*>(QStringLiteral("forwardButton"))->isEnabled(), true);
    Click(box, "thanksButton");
    EXPECT_EQ(box.findChild<QPushButton*>(QStringLiteral("forwardButton"))->isEnabled(), false);
}

TEST_F(AboutBoxTest, PicturesAreAsWideAsTheTextAtMost) {
    AboutBox& box = OpenDocuments(AboutPage::Help);
    const QTextDocument& document = *View(box)->document();
    const auto widths = [&] {
        QList<double> found;
        for (const QTextFormat& format : document.allFormats())
            if (format.isImageFormat() && format.toImageFormat().width() > 0)
                found.append(format.toImageFormat().width());
        return found;
    };
    const auto widest = [&](double room) {
        const QList<double> all = widths();
        return std::ranges::any_of(all, [room](double width) { return std::abs(width - room) < 1; });
    };
    const auto room = [&] { return View(box)->viewport()->width() - 2 * document.documentMargin(); };
    EXPECT_TRUE(widest(room()));
    const double before = room();
    box.ResizeClient(box.Client()->size() * 0.8);
    ASSERT_TRUE(PumpUntil([&] { return room() < before - 50; }));
    EXPECT_TRUE(widest(room()));
}

TEST_F(AboutBoxTest, TheGuideNamesEachEntryOfTheMenusAndEachKey) {
    const QDir guide(QStringLiteral(PIXELGROVE_SOURCE_DIR "/docs/guide"));
    QString all;
    for (const QString& page : guide.entryList({QStringLiteral("*.md")}))
        all += DocumentText(guide.path(), page);
    const QStringList keyRows = DocumentText(guide.path(), QStringLiteral("Keys.md")).split(u'\n');
    // In the guide keys are written as people call them.
    const auto isInKeyTable = [&keyRows](QString key, const QString& entry) {
        key.replace(QStringLiteral("Return"), QStringLiteral("Enter"));
        key.replace(QStringLiteral("++"), QStringLiteral("+plus"))
            .replace(QStringLiteral("+-"), QStringLiteral("+minus"));
        return std::ranges::any_of(keyRows, [&](const QString& row) {
            return row.section(u'|', 1, 1).trimmed().split(QStringLiteral(", ")).contains(key) &&
                   row.contains(entry);
        });
    };
    int entries = 0, keys = 0;
    for (const auto& rows : {MenuBarRows(), EditorMenuRows(), OutputMenuRows(), BrowserMenuRows(),
                             ChannelMenuRows(true), StageMenuRows()})
        for (const MenuRow& row : rows) {
            const bool isSite = row.commandId >= kCmdSiteBookOfShaders && row.commandId <= kCmdSiteOneShader;
            if (*row.text == 0 || row.kind == MenuRowKind::Placeholder || isSite) continue;
            QString text = QString::fromUtf16(row.text).remove(u'&');
            while (text.endsWith(u'.') || text.endsWith(u','))
                text.chop(1);
            ++entries;
            EXPECT_TRUE(all.contains(text, Qt::CaseInsensitive)) << qPrintable(text);
            for (const QString& key :
                 QString::fromLatin1(row.keys).split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
                ++keys;
                EXPECT_TRUE(key == QLatin1String("Ctrl+=") || isInKeyTable(key, u'*' + text))
                    << qPrintable(key);
            }
        }
    for (const KeyRow& row : KeyRows())
        for (const QString& key : QString::fromLatin1(row.keys).split(QStringLiteral("; ")))
            EXPECT_TRUE(isInKeyTable(key, {})) << qPrintable(key);
    // The windows' own entries lead to their pages.
    const QStringList overview = DocumentText(guide.path(), QStringLiteral("Overview.md")).split(u'\n');
    for (const int command :
         {kCmdAnimationWindow, kCmdShadertoyBrowser, kCmdAudioConfiguration, kCmdRecordingSettings}) {
        const MenuRow& row = *std::ranges::find(MenuBarRows(), command, &MenuRow::commandId);
        const QString entry = QStringLiteral("*Windows > %1*").arg(QString::fromUtf16(row.text).remove(u'&'));
        EXPECT_TRUE(std::ranges::any_of(overview, [&entry](const QString& line) {
            return line.contains(entry) && line.contains(QStringLiteral(".md)"));
        })) << qPrintable(entry);
    }
    EXPECT_GT(entries, 100);
    EXPECT_GT(keys, 30);
}

TEST_F(AboutBoxTest, TextIsFoundRoundThePage) {
    QTextBrowser& view =
        *View(Open({.properties = QStringLiteral("Some tree, a TREE, trees.")}, AboutPage::Properties));
    const struct {
        const char* text;
        FindStep step;
        int start;
        const char* found;
    } rows[] = {
        {"t", FindStep::Again, 5, "t"},     {"tre", FindStep::Again, 5, "tre"},
        {"tre", FindStep::Next, 13, "TRE"}, {"tre", FindStep::Next, 19, "tre"},
        {"tre", FindStep::Next, 5, "tre"},  {"trex", FindStep::Again, 5, "tre"},  // stands nowhere
        {"", FindStep::Next, 5, "tre"},     {"tre", FindStep::Previous, 19, "tre"},
    };
    for (const auto& [text, step, start, found] : rows) {
        FindOnPage(view, QLatin1String(text), step);
        EXPECT_EQ(view.textCursor().selectionStart(), start) << text;
        EXPECT_EQ(view.textCursor().selectedText(), QLatin1String(found)) << text;
    }
}

TEST_F(AboutBoxTest, TextsOfOthersAreNoMarkup) {
    const QString text = QStringLiteral("<b>x</b> **y** https://example.org/z.\n\tend");
    AboutBox& box = Open({.properties = text}, AboutPage::Properties);
    EXPECT_EQ(Text(box), text);
    EXPECT_TRUE(box.findChild<QPushButton*>(QStringLiteral("propertiesButton"))->isVisible());
    QTextCursor cursor = View(box)->textCursor();
    cursor.setPosition(int(text.indexOf(QStringLiteral("https"))) + 3);
    EXPECT_EQ(cursor.charFormat().anchorHref(), QStringLiteral("https://example.org/z"));
}

TEST_F(AboutBoxTest, TheCheckForANewerBuildEndsWithTheBox) {
    test::TestService service;
    ASSERT_TRUE(service.IsReady());
    service.Put("media/mlupdate.txt", "!(REL) Jan 1 2030 @ 00:00:00");
    const QString stamp = QStringLiteral("(REL) Nov 11 2024 @ 01:42:05");
    AboutBox& box =
        Open({.updateAddress = service.Http("/plain/media/a"), .buildStamp = stamp}, AboutPage::Updates);
    EXPECT_TRUE(PumpUntil([&] {
        return Text(box).startsWith(QStringLiteral("An update is available. Download from http://127.0.0.1"));
    }));
    box.close();
    ASSERT_TRUE(PumpUntil([this] { return !slot; }));
    // One that still waits for its answer.
    Open({.updateAddress = service.Silent("http"), .buildStamp = stamp}, AboutPage::Updates).close();
    EXPECT_TRUE(PumpUntil([this] { return !slot; }));
}

}  // namespace
}  // namespace pixelgrove
