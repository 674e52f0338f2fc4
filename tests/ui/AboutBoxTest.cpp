// The About box: its pages, its links, and the check for a newer build while it lives.
#include "ui/about/AboutBox.h"

#include <QTextBlock>
#include <QTextBrowser>
#include <utility>

#include "WindowFixture.h"
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

TEST_F(AboutBoxTest, LinksLeadToHeadingsAndToTheBrowser) {
    const QString documents = QStringLiteral(PIXELGROVE_SOURCE_DIR "/data/Help");
    AboutBox& box =
        Open({.documents = documents, .openUrl = window->Projects().dialogs.openUrl}, AboutPage::About);
    int headings = 0, pages = 0;
    for (const AboutPage page : {AboutPage::About, AboutPage::Help, AboutPage::License, AboutPage::Thanks}) {
        box.ShowPage(page);
        QTextBrowser& view = *View(box);
        EXPECT_FALSE(Text(box).startsWith(QStringLiteral("Missing file"))) << int(page);
        QStringList links;
        for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
            for (const auto& range : block.textFormats())
                if (range.format.isAnchor()) links.append(range.format.anchorHref());
        for (const QString& link : links) {
            const bool isHeading = link.startsWith(u'#');
            ++(isHeading ? headings : pages);
            if (isHeading)
                EXPECT_TRUE(ScrollToHeading(view, link.sliced(1))) << qPrintable(link);
            else
                EXPECT_EQ(QUrl(link).scheme(), QStringLiteral("https")) << qPrintable(link);
        }
    }
    EXPECT_GT(headings, 15);
    EXPECT_GT(pages, 10);
    box.ShowPage(AboutPage::Help);
    QTextBrowser& view = *View(box);
    Q_EMIT view.anchorClicked(QUrl(QStringLiteral("#keys")));
    EXPECT_EQ(view.cursorForPosition(QPoint(60, 8)).block().text(), QStringLiteral("Keys"));
    EXPECT_TRUE(opened.isEmpty());
    Q_EMIT view.anchorClicked(QUrl(QStringLiteral("https://example.org/a")));
    EXPECT_EQ(opened, QStringList(QStringLiteral("https://example.org/a")));
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
