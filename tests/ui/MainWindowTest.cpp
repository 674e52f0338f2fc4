// Stages, editor, messages, menus and project commands of the main window.
#include <QClipboard>
#include <QMenu>
#include <QTextBlock>

#include "WindowFixture.h"
#include "render/source/LogMapping.h"

namespace pixelgrove {
namespace {

using MainWindowTest = WindowTest;

TEST_F(MainWindowTest, StartsWithTheDefaultImageAndOnlyEditingMarksIt) {
    EXPECT_EQ(Status(), QStringLiteral("[ Image ] No errors."));
    EXPECT_EQ(Text("stageImageButton"), QStringLiteral("[ Image ]"));
    EXPECT_EQ(Text("caretStatusText"), QStringLiteral("Ln: 1 / 11\t Ch: 1"));
    EXPECT_EQ(Title(), QStringLiteral("Untitled.json - Pixelgrove"));
    EXPECT_FALSE(App()->project.shaderModified);
    QTest::keyClicks(Editor(), QStringLiteral("x"));
    EXPECT_TRUE(App()->project.shaderModified);
    EXPECT_EQ(Title(), QStringLiteral("*Untitled.json - Pixelgrove"));
    EXPECT_EQ(App()->project.documents[kStageImage].text, u'x' + DefaultSource(kStageImage));
    EXPECT_EQ(Text("caretStatusText"), QStringLiteral("Ln: 1 / 11\t Ch: 2"));
}

TEST_F(MainWindowTest, AddedStagesKeepTheirTexts) {
    Click("stageAddButton");
    auto* menu = window->findChild<QMenu*>(QStringLiteral("addStageMenu"));
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 6);
    menu->actions().at(1)->trigger();
    menu->close();
    EXPECT_EQ(App()->project.currentStage, uint32_t(kStageBufferA));
    EXPECT_EQ(Text("stageBufferAButton"), QStringLiteral("[ Buffer A ]"));
    EXPECT_EQ(Text("stageImageButton"), QStringLiteral("Image"));
    ReplaceText(QStringLiteral("// A"));
    Click("stageImageButton");
    EXPECT_EQ(Editor()->toPlainText(), DefaultSource(kStageImage));
    Click("stageBufferAButton");
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("// A"));
}

TEST_F(MainWindowTest, TheTextReachesTheDocumentUnchanged) {
    // A no-break space stays one, and a line separator becomes a line of its own however it came in.
    QApplication::clipboard()->setText(QStringLiteral("a\u00A0b\u2028c"));
    Editor()->selectAll();
    Run(kCmdEditPaste);
    QTest::keyClick(Editor(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(App()->project.documents[kStageImage].text, QStringLiteral("a\u00A0b\nc\n"));
    EXPECT_EQ(Editor()->blockCount(), 3);
}

TEST_F(MainWindowTest, AMessageLeadsToItsLine) {
    ReplaceText(QStringLiteral("// line\n").repeated(300));
    Editor()->GoToLine(5);
    const std::pair<const char*, int> rows[] = {
        {"Image(200): error: x", 200},      {"Buffer B(30): on the stage that is shown", 30},
        {"Image(1): line 1 stays put", 30}, {"no place at all", 30},
        {"Image(2000000000): beyond", 301}, {"/no/such/file(7): dropped", 301},
    };
    for (const auto& [message, line] : rows) {
        window->JumpToMessage(MessagesOf(QString::fromLatin1(message)).front());
        EXPECT_EQ(Editor()->CaretLine(), line) << message;
    }

    // A long message goes on in the next row, and is one message there too. The one before it ends its rows
    // in other ways.
    window->ShowMessages(MessagesOf(QStringLiteral("fi\u2028rst\rsecond\r\nImage(42): error: ") +
                                    QStringLiteral("and so on ").repeated(20)),
                         {});
    auto* pane = Control<QPlainTextEdit>("statusText");
    QTextCursor second(pane->document()->findBlockByNumber(2));
    const int firstRow = pane->cursorRect(second).top();
    second.movePosition(QTextCursor::EndOfBlock);
    EXPECT_GT(pane->cursorRect(second).top(), firstRow);
    QTest::mouseDClick(pane->viewport(), Qt::LeftButton, {}, pane->cursorRect(second).center());
    EXPECT_EQ(Editor()->CaretLine(), 42);
    EXPECT_EQ(window->focusWidget(), Editor());
}

TEST_F(MainWindowTest, UnsavedChangesAreAskedForOnceAndOnlyYesProceeds) {
    chosenPath = FileWith(kTwoStageProject);
    Run(kCmdOpenProject);
    EXPECT_EQ(questions, 0);
    EXPECT_EQ(Status(), QStringLiteral("Project loaded."));

    ReplaceText(QStringLiteral("mine"));
    Run(kCmdOpenProject);
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(lastCaption, QStringLiteral("Warning: Unsaved changes"));
    EXPECT_EQ(lastQuestion,
              QStringLiteral("You've made changes to the current shader that have not been saved. If you "
                             "proceed, those changes will be lost.\n\nDo you wish to proceed?"));
    EXPECT_EQ(App()->project.documents[kStageImage].text, QStringLiteral("mine"));
    Run(kCmdCancel);
    EXPECT_TRUE(window->isVisible()) << "the answer was no";

    answer = true;
    Run(kCmdOpenProject);
    EXPECT_FALSE(App()->project.shaderModified);
    EXPECT_EQ(Title(), QFileInfo(chosenPath).fileName() + QStringLiteral(" - Pixelgrove"));
    EXPECT_EQ(App()->project.documents[kStageCommon].text, QStringLiteral("// shared"));

    // New asks nothing and leaves the mark of changes as it is.
    ReplaceText(QStringLiteral("mine too"));
    const int before = questions;
    Run(kCmdNew);
    EXPECT_EQ(questions, before);
    EXPECT_TRUE(App()->project.shaderModified);
    EXPECT_EQ(Title(), QStringLiteral("*Untitled.json - Pixelgrove"));
    EXPECT_EQ(Editor()->toPlainText(), DefaultSource(kStageImage));
    EXPECT_FALSE(Control<QPushButton>("stageCommonButton")->isVisible());

    Run(kCmdRestorePrevious);
    EXPECT_EQ(Status(), QStringLiteral("Previous project restored."));
    EXPECT_EQ(Title(), u'*' + QFileInfo(chosenPath).fileName() + QStringLiteral(" - Pixelgrove"));
    // A source file read over a changed stage throws something away as well.
    chosenPath = FileWith("// source", QStringLiteral("glsl"));
    Run(kCmdOpenFile);
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("// source"));
    Run(kCmdRestorePrevious);
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("mine too"));
}

TEST_F(MainWindowTest, ABadFileLeavesTheProjectAlone) {
    const QString good = Editor()->toPlainText();
    chosenPath = FileWith("{ no json");
    Run(kCmdOpenProject);
    EXPECT_TRUE(Status().startsWith(QStringLiteral("Error loading project.")));
    EXPECT_EQ(Editor()->toPlainText(), good);
    EXPECT_EQ(Title(), QStringLiteral("Untitled.json - Pixelgrove"));
    chosenPath.clear();
    Run(kCmdOpenProject);
    EXPECT_EQ(Status(), QStringLiteral("Error loading file."));

    for (const auto& [name, words] : {std::pair("absent.json", "project"), {"absent.GLSL", "file"}}) {
        const QString path = folder.filePath(QString::fromLatin1(name));
        MakeWindow(path);
        EXPECT_EQ(Editor()->toPlainText(), good);
        EXPECT_EQ(Status(), QStringLiteral("Error loading %1.\nThe file \"%2\" can't be read.")
                                .arg(QString::fromLatin1(words), path));
    }
}

TEST_F(MainWindowTest, ASourceFileBeginsAProject) {
    const QString path = FileWith("// mine", QStringLiteral("glsl"));
    MakeWindow(path);
    EXPECT_EQ(App()->project.documents[kStageImage].text, QStringLiteral("// mine"));
    EXPECT_EQ(App()->project.fileName, path);
    EXPECT_EQ(Status(), QStringLiteral("File loaded."));
    EXPECT_EQ(Text("stageImageButton"), QStringLiteral("[ Image ]"));
}

TEST_F(MainWindowTest, MenuChoicesReachTheRunsSettings) {
    auto choose = [this](int id) { window->MenuEntries().Action(id)->trigger(); };
    auto ticked = [this](int id) { return window->MenuEntries().Action(id)->isChecked(); };
    EXPECT_TRUE(ticked(kCmdFormatRgba32f));
    choose(kCmdFormatRgba8);
    EXPECT_EQ(App()->run->frameBufferFormat, 0x8058u);
    EXPECT_FALSE(ticked(kCmdFormatRgba32f));
    EXPECT_TRUE(ticked(kCmdFormatRgba8));
    choose(kCmdFormatRgb16f);
    EXPECT_EQ(App()->run->frameBufferFormat, 0x8058u) << "GL_RGB16F is not accepted";
    EXPECT_TRUE(ticked(kCmdFormatRgb16f)) << "but ticked";
    EXPECT_FALSE(ticked(kCmdFormatRgba8));
}

}  // namespace
}  // namespace pixelgrove
