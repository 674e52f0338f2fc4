// The menus, the lists of recent files in them, and the editor's context menu.
#include "ui/Menus.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <set>

#include "WindowFixture.h"
#include "commands/CommandRegistry.h"
#include "ui/RecentMenus.h"
#include "ui/editor/EditorMenu.h"
#include "ui/editor/ShaderHelp.h"

namespace pixelgrove {
namespace {

// An entry as "id text", in parentheses when it is disabled, with its key behind; "-" for a separator.
QString Describe(const QAction& action) {
    if (action.isSeparator()) return QStringLiteral("-");
    QString text = action.menu() ? u'>' + action.text()
                                 : QStringLiteral("%1 %2").arg(action.data().toInt()).arg(action.text());
    if (!action.shortcut().isEmpty()) text += u'\t' + action.shortcut().toString();
    return action.isEnabled() ? text : u'(' + text + u')';
}

std::string Describe(const QMenu& menu) {
    QStringList lines;
    for (const QAction* action : menu.actions())
        lines.append(Describe(*action));
    return lines.join(u'\n').toStdString();
}

class MenusTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!App()) return;
        for (auto* list :
             {&App()->recent.recentFiles, &App()->recent.recentProjects, &App()->recent.recentPalettes})
            *list = std::make_unique<StringList>();
        for (const auto& [first, last] : {std::pair(kCmdRecentFileFirst, kCmdRecentFileFirst + 9),
                                          std::pair(kCmdLayoutFirst, int(kCmdLayoutLast))})
            ASSERT_TRUE(commands.Add({.first = first, .last = last, .run = [](int) {}}));
        menus =
            std::make_unique<Menus>(bar, bar, commands, App()->recent, [this](int id) { ran.push_back(id); });
    }
    QMenu* Submenu(const char* label) const { return menus->FindSubmenu(QString::fromLatin1(label)); }

    QMenuBar bar;
    CommandRegistry commands;
    std::unique_ptr<Menus> menus;
    std::vector<int> ran;
};

TEST_F(MenusTest, RecentListsFillWhenTheirMenuOpens) {
    QMenu* files = Submenu("Recent Files");
    EXPECT_EQ(Describe(*files), "(0 N/A)");
    App()->recent.recentFiles->entries = {QStringLiteral("/a b/c&d.glsl"), QStringLiteral("/x.glsl")};
    App()->recent.recentPalettes->entries = {QStringLiteral("/p")};
    Q_EMIT Submenu("&FIle")->aboutToShow();
    EXPECT_EQ(Describe(*files), "32768 1 /a b/c&&d.glsl\n32769 2 /x.glsl");
    EXPECT_EQ(Describe(*Submenu("Recent Palette Files")), "(32790 1 /p)");
    EXPECT_TRUE(Submenu("Recent Projects")->actions().isEmpty());
    EXPECT_FALSE(Submenu("Recent Projects")->isEnabled());
    EXPECT_TRUE(files->isEnabled());

    // A choice may change the list that it stands in.
    QObject::connect(files->actions().at(1), &QAction::triggered, &bar, [this] {
        App()->recent.recentFiles->entries.move(1, 0);
        FillRecentMenu(*menus, kRecentMenus[0], App()->recent);
    });
    menus->Action(32769)->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ran, std::vector<int>{32769});
    EXPECT_EQ(Describe(*files), "32768 1 /x.glsl\n32769 2 /a b/c&&d.glsl");
}

TEST_F(MenusTest, LayoutsHaveAHundredAndOneIds) {
    QStringList names{QStringLiteral("a & b")};
    while (names.size() < 103)
        names.append(QString::number(names.size()));
    menus->FillLayouts(names);
    const QMenu* layouts = Submenu("Window Layouts");
    ASSERT_EQ(layouts->actions().size(), 101);
    EXPECT_EQ(Describe(*layouts->actions().front()), QStringLiteral("40318 a && b"));
    EXPECT_EQ(layouts->actions().back()->data().toInt(), kCmdLayoutLast);
    EXPECT_EQ(menus->LayoutName(kCmdLayoutFirst), names[0]);
    EXPECT_EQ(menus->LayoutName(kCmdLayoutLast), names[100]);
    menus->FillLayouts({});
    EXPECT_EQ(menus->LayoutName(kCmdLayoutFirst), QString());
    EXPECT_EQ(menus->Action(kCmdLayoutFirst), nullptr);
}

TEST(EditorMenuTest, IncludeNames) {
    const std::pair<QString, const char*> rows[] = {
        {QStringLiteral("#include \"a.glsl\""), "a.glsl"},
        {QStringLiteral("#include\t \"b c.glsl\" // \"d\""), "b c.glsl"},
        {QStringLiteral("  #include \"a\""), ""},
        {QStringLiteral("x #include \"a\""), ""},
        {QStringLiteral("#include\"tight\""), "tight"},
        {QStringLiteral("#include \"open end"), "open end"},
        {QStringLiteral("#include \"\""), ""},
        {QStringLiteral("#include <a.glsl>"), ""},
        {QStringLiteral("# include \"a.glsl\""), ""},
        {QStringLiteral("#include") + QString(1014, u' ') + QStringLiteral("\"abc\""), ""},
        {QStringLiteral("#include") + QString(1013, u' ') + QStringLiteral("\"abc\""), "a"},
    };
    for (const auto& [line, name] : rows)
        EXPECT_EQ(IncludeNameOf(line), QString::fromLatin1(name)) << qPrintable(line.trimmed());
}

using EditorMenuWindowTest = WindowTest;

TEST_F(EditorMenuWindowTest, TheMenuIsForTheLineBelowTheMouse) {
    const QString include = FileWith("// included", QStringLiteral("&glsl"));
    ReplaceText(QStringLiteral("plain\n#include \"%1\"\n#include \"absent\"\n").arg(include));
    auto menuAt = [this](int line) {
        Editor()->GoToLine(line);
        const QPoint at = Editor()->cursorRect().center();
        Editor()->GoToLine(1);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, Editor()->viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(Editor()->viewport(), &event);
        QMenu* menu = nullptr;
        for (QMenu* candidate : Editor()->findChildren<QMenu*>(QStringLiteral("editorMenu")))
            if (candidate->isVisible()) menu = candidate;
        return menu;
    };
    const std::string common =
        "1550 Undo\tCtrl+Z\n45001 Redo\tCtrl+Y\n-\n1553 Cut\tCtrl+X\n1552 Copy\tCtrl+C\n1551 Paste\tCtrl+V\n"
        "1554 Delete\n-\n1555 Select All\tCtrl+A\n-\n1556 Shader Help\n-\n"
        "1557 Insert #defines in text\n(1558 Load #defines from text)\n-\n1580 Create Control\n-\n"
        "1582 Indent Selection";
    QMenu* menu = menuAt(1);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(Describe(*menu), common);
    menu->close();
    Run(kCmdOpenInclude);
    EXPECT_TRUE(opened.isEmpty());

    menu = menuAt(2);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(Describe(*menu), "1581 Open \"" +
                                   QString(include).replace(u'&', QStringLiteral("&&")).toStdString() +
                                   "\"\n-\n" + common);
    menu->actions().front()->trigger();
    EXPECT_EQ(opened, QStringList(include + QStringLiteral(":0")));
    Run(kCmdOpenInclude);
    EXPECT_EQ(opened.size(), 1) << "the name is good for one choice";
    menu->close();

    menu = menuAt(3);
    ASSERT_NE(menu, nullptr);
    menu->actions().front()->trigger();
    EXPECT_EQ(opened.size(), 1) << "what is missing is dropped";
    menu->close();
}

TEST_F(EditorMenuWindowTest, ShaderHelpAndSites) {
    const QString glossary = QStringLiteral("https://thebookofshaders.com/glossary/?search=");
    const std::pair<QString, QString> rows[] = {
        {QString(), QStringLiteral("https://thebookofshaders.com")},
        {QStringLiteral("smoothstep"), glossary + QStringLiteral("smoothstep")},
        {QStringLiteral("a&b=%41 #\u00E9+"), glossary + QStringLiteral("a%26b%3D%2541%20%23%C3%A9%2B")},
        {QString(125, u'x'), glossary + QString(125, u'x')},
        {QString(126, u'x'), QString()},
    };
    for (const auto& [selected, address] : rows) {
        opened.clear();
        ReplaceText(selected);
        Run(kCmdEditSelectAll);
        Run(kCmdShaderHelp);
        EXPECT_EQ(opened.join(u' '), address);
    }
    opened.clear();
    for (int id = kCmdSiteBookOfShaders; id <= kCmdSiteOneShader; ++id)
        Run(id);
    EXPECT_EQ(opened, QStringList({QStringLiteral("https://thebookofshaders.com"),
                                   QStringLiteral("https://glslsandbox.com"),
                                   QStringLiteral("https://www.shadertoy.com"),
                                   QStringLiteral("https://www.oneshader.net")}));
}

}  // namespace
}  // namespace pixelgrove
