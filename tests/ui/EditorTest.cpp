// The code editor in the main window: colours, undo, indentation, what counts as a change, saved views,
// links, and texts that are too large or too strange for haste.
#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QListView>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <random>

#include "WindowFixture.h"
#include "core/CommentMap.h"
#include "look/widgets/Theme.h"
#include "support/CpuTime.h"
#include "ui/editor/LineGutter.h"
#include "ui/text/GlslWords.h"

namespace pixelgrove {
namespace {

QString Latin(const char* text) {
    return QString::fromLatin1(text);
}

class EditorTest : public WindowTest {
  protected:
    // Whatever waits for a paint of the text happens.
    void Paint() const {
        Editor()->viewport()->repaint();
        QCoreApplication::processEvents();
    }
    void SetUp() override {
        WindowTest::SetUp();
        if (App()) Paint();
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(Editor(), Qt::Key(key), modifiers);
    }
    void Type(const QString& text) const { QTest::keyClicks(Editor(), text); }
    void Paste(const QString& text) const {
        QApplication::clipboard()->setText(text);
        Run(kCmdEditPaste);
    }
    void Load(const QString& text) const {
        ReplaceText(text);
        Editor()->moveCursor(QTextCursor::Start);
        Paint();
    }
    const QString& Stored() const { return App()->project.currentDocument->text; }
    // The stretches of a line (from 0) that have the colour.
    QStringList Coloured(int line, uint32_t colour) const {
        const QTextBlock block = Editor()->document()->findBlockByNumber(line);
        QStringList found;
        for (const QTextLayout::FormatRange& range : block.layout()->formats())
            if (range.format.foreground().color() == FromBgr(colour))
                found.append(block.text().mid(range.start, range.length));
        return found;
    }
    void Wheel(Qt::KeyboardModifiers modifiers, int delta) const {
        const QPointF at(20, 20);
        QWheelEvent event(at, Editor()->viewport()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Editor()->viewport(), &event);
    }
};

using namespace word_colours;

TEST_F(EditorTest, UndoAfterManyColouringsTakesBackTheUsersEditAlone) {
    Load(Latin("int a; // b\n"));
    const QString before = Stored();
    Type(Latin("vec2 "));
    for (int i = 0; i < 200; ++i) {
        Key(Qt::Key_End);
        Paint();
    }
    EXPECT_EQ(Coloured(0, kType), QStringList({Latin("vec2"), Latin("int")}));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Stored(), before);
    Paint();
    EXPECT_EQ(Coloured(0, kType), QStringList(Latin("int")));
    EXPECT_EQ(Coloured(0, kComment), QStringList(Latin("// b")));
    Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Stored(), Latin("vec2 ") + before);
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), before);
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Stored(), Latin("vec2 ") + before);
}

TEST_F(EditorTest, OnlyWhatIsOnScreenIsColouredAnew) {
    Load(Latin("int a;\n").repeated(400));
    EXPECT_EQ(Coloured(0, kType), QStringList(Latin("int")));
    EXPECT_TRUE(Coloured(350, kType).isEmpty()) << "nobody has seen it yet";
    auto* bar = Editor()->verticalScrollBar();
    bar->setSliderPosition(300);
    Paint();
    EXPECT_EQ(Coloured(301, kType), QStringList(Latin("int"))) << "the slider is still held";
    const int below = 300 + int(Editor()->VisibleLines().size()) + 1;
    EXPECT_TRUE(Coloured(below, kType).isEmpty());
    const auto resizeBy = [this](int pixels) {
        window->resize(window->width(), window->height() + pixels);
        QCoreApplication::processEvents();
        Paint();
    };
    resizeBy(100);
    EXPECT_EQ(Coloured(below, kType), QStringList(Latin("int")));
    resizeBy(-100);
    for (int i = 0; i < 200; ++i)
        Wheel(Qt::NoModifier, -120);
    Paint();
    EXPECT_EQ(bar->value(), bar->maximum());
    EXPECT_EQ(Coloured(399, kType), QStringList(Latin("int")));
    EXPECT_TRUE(Coloured(200, kType).isEmpty());

    // A comment that is opened on screen reaches to its end, wherever that is.
    Editor()->moveCursor(QTextCursor::Start);
    Type(Latin("/*"));
    Paint();
    EXPECT_EQ(Coloured(200, kComment), QStringList(Latin("int a;")));
    EXPECT_TRUE(Coloured(0, kType).isEmpty());
    // The text of a stage that is shown again has all its colours at once.
    AddStage(App()->project, kStageCommon);
    SelectStage(App()->project, kStageCommon);
    SelectStage(App()->project, kStageImage);
    Key(Qt::Key_Home, Qt::ControlModifier);
    Key(Qt::Key_Delete);
    Paint();
    EXPECT_EQ(Coloured(0, kFunction), QStringList());
    EXPECT_EQ(Coloured(0, kType), QStringList(Latin("int")));
    EXPECT_EQ(Coloured(350, kComment), QStringList(Latin("int a;"))) << "out of sight colours stay";
}

TEST_F(EditorTest, OnlyWhatDiffersFromTheSavedTextIsMarked) {
    Load(Latin("int a;\n").repeated(400));
    Editor()->GoToLine(3);
    AddStage(App()->project, kStageCommon);
    MarkProjectSaved(App()->project);
    const auto isMarked = [this] {
        Paint();
        QCoreApplication::sendPostedEvents();
        return App()->project.shaderModified;
    };
    for (const int key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown}) {
        Key(key);
        EXPECT_FALSE(isMarked()) << key;
    }
    for (const uint32_t stage : {kStageCommon, kStageImage}) {
        SelectStage(App()->project, stage);
        EXPECT_FALSE(isMarked());
    }
    Type(Latin("x"));
    EXPECT_TRUE(App()->project.shaderModified) << "without waiting for a paint that may never come";
    Run(kCmdEditUndo);
    EXPECT_FALSE(isMarked()) << "back at the saved text";
    EXPECT_FALSE(Title().startsWith(u'*'));
    Editor()->redo();
    MarkProjectSaved(App()->project);
    Run(kCmdEditUndo);
    EXPECT_TRUE(isMarked()) << "the saved text is the later one";
}

TEST_F(EditorTest, ControlsAreScannedAnewBehindAPaintThatSawWhereTheyCouldCome) {
    Load(Latin("int a;\n").repeated(400) + Latin("uniform float b;\n"));
    float& speed = Controls()->uniforms[0].range.value;
    const auto isScanned = [&](const auto& edit) {
        speed = 0.5f;
        edit();
        EXPECT_EQ(speed, 0.5f) << "not before the paint";
        Paint();
        return speed != 0.5f;
    };
    EXPECT_FALSE(isScanned([this] { Type(Latin(";")); }));
    EXPECT_TRUE(isScanned([this] { Key(Qt::Key_End, Qt::ControlModifier); })) << "the word at the end";
    EXPECT_TRUE(isScanned([this] {
        Type(Latin("x"));
        Editor()->viewport()->repaint();
        Key(Qt::Key_Home, Qt::ControlModifier);
        Editor()->viewport()->repaint();
    })) << "the first of two paints saw it";
    EXPECT_TRUE(isScanned([this] { Type(Latin("uniform ")); }));
    EXPECT_FALSE(isScanned([this] { Key(Qt::Key_Down); })) << "colours may have changed, the text hasn't";
    Load(Latin("int a;\n"));
    Controls()->uniformCount = 0;
    EXPECT_TRUE(isScanned([this] { Type(Latin("x")); })) << "without any control";
}

TEST_F(EditorTest, KeysThatIndent) {
    Load(QString());
    Type(Latin("{"));
    Key(Qt::Key_Return);
    EXPECT_EQ(Stored(), Latin("{\n\t"));
    Type(Latin("a {"));
    Key(Qt::Key_Enter);
    EXPECT_EQ(Stored(), Latin("{\n\ta {\n\t\t"));
    Type(Latin("b}"));
    EXPECT_EQ(Stored(), Latin("{\n\ta {\n\t\tb}")) << "behind other text a brace is only a brace";
    Key(Qt::Key_Return, Qt::ShiftModifier);
    Type(Latin("}"));
    EXPECT_EQ(Stored(), Latin("{\n\ta {\n\t\tb}\n}"));
    Key(Qt::Key_Tab);
    Type(Latin("}"));
    EXPECT_TRUE(Stored().endsWith(Latin("\n}\t}"))) << "one Enter, one brace";

    // The indentation is no step of undo.
    Load(Latin("\tx"));
    Key(Qt::Key_End);
    Key(Qt::Key_Return);
    Type(Latin("y"));
    EXPECT_EQ(Stored(), Latin("\tx\n\ty"));
    Run(kCmdEditUndo);
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), Latin("\tx\t"));
}

TEST_F(EditorTest, TabsMoveTheSelectedLines) {
    Load(Latin("a\n\tb\n\nc\n"));
    Select(1, 6);  // ends at the start of the line with c
    Key(Qt::Key_Tab);
    EXPECT_EQ(Stored(), Latin("\ta\n\t\tb\n\t\n\tc\n"));
    EXPECT_EQ(Editor()->textCursor().selectionStart(), 1);
    EXPECT_EQ(Editor()->textCursor().selectionEnd(), 10);
    Key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(Stored(), Latin("a\n    b\n\nc\n"));
    Editor()->selectAll();
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Stored(), Latin("a\nb\n\nc\n"));
    Run(kCmdEditUndo);
    EXPECT_NE(Stored(), Latin("a\n    b\n\nc\n")) << "none of it is undone by itself";
}

TEST_F(EditorTest, IndentSelectionFollowsTheBraces) {
    const QString text = Latin("void f()\n{\nif (a) {\n      b;\n} else {\n/* {\n x */ c;\n#d\n}\n}\n\nend");
    Load(text);
    Run(kCmdIndentSelection);
    EXPECT_EQ(Stored(), text) << "nothing is selected";
    Editor()->selectAll();
    Run(kCmdIndentSelection);
    EXPECT_EQ(Stored(),
              Latin("void f()\n{\n\tif (a) {\n\t\tb;\n\t} else {\n/* {\n\t\tx */ c;\n#d\n\t}\n}\n\nend"));
    EXPECT_EQ(Editor()->textCursor().selectionEnd(), Stored().size());
    const QString indented = Stored();
    Editor()->moveCursor(QTextCursor::End);
    Type(Latin("!"));
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), indented);
    Run(kCmdEditUndo);
    EXPECT_TRUE(Stored() != text) << "undo knows nothing of it";
}

TEST_F(EditorTest, LineCommandsAreSingleSteps) {
    const QString text = Latin("a\n\tb\nc\n");
    const std::pair<int, const char*> rows[] = {
        {kCmdToggleComments, "// a\n// \tb\nc\n"},
        {kCmdDuplicate, "a\n\tba\n\tb\nc\n"},
        {kCmdMoveLinesDown, "c\na\n\tb\n"},
    };
    for (const auto& [command, expected] : rows) {
        Load(text);
        Type(Latin("x"));
        Key(Qt::Key_Backspace);
        Select(0, 4);
        Run(command);
        EXPECT_EQ(Stored(), Latin(expected));
        EXPECT_EQ(Editor()->toPlainText(), Stored());
        EXPECT_TRUE(Editor()->textCursor().hasSelection());
        Run(kCmdEditUndo);
        EXPECT_EQ(Stored(), text) << expected;
        Editor()->redo();
        EXPECT_EQ(Stored(), Latin(expected));
    }
    // Ten thousand lines are no reason to wait.
    Load(Latin("\tint a;\n").repeated(10000));
    Editor()->selectAll();
    const int start = test::ThreadCpuMs();
    Run(kCmdToggleComments);
    Run(kCmdToggleComments);
    EXPECT_LT(test::ThreadCpuMs() - start, 4000);
    EXPECT_EQ(Stored(), Latin("\tint a;\n").repeated(10000));
}

TEST_F(EditorTest, GoesToTheLineThatIsTyped) {
    Load(Latin("int a;\n").repeated(99));
    for (const auto& [typed, line] : {std::pair("12", 12), std::pair("4321", 100)}) {
        QTimer::singleShot(0, window.get(), [typed = typed] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            QTest::keyClicks(dialog->findChild<QLineEdit*>(), Latin(typed));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        Run(kCmdGoToLine);
        EXPECT_EQ(Editor()->CaretLine(), line);
    }
}

TEST_F(EditorTest, CompletionTakesNoKeyThatIsNotItsOwn) {
    Editor()->setFocus();
    auto* list = Control<QListView>("completions");
    const auto rows = [list] {
        QStringList words;
        for (int row = 0; list->isVisible() && row < list->model()->rowCount(); ++row)
            words.append(list->model()->index(row, 0).data().toString());
        return words.join(u' ').toStdString();
    };
    const auto press = [this](const std::vector<Qt::Key>& keys) {
        for (const Qt::Key key : keys)
            Key(key);
    };
    SetDocumentText(App()->project.documents[kStageCommon], Latin("float smoothed; // smoothest\n"));
    const struct {
        const char* typed;
        std::vector<Qt::Key> keys;
        const char* shown;
        const char* stored;
    } cases[] = {
        {"sm", {}, "", "sm"},
        {"smo", {}, "smooth smoothed smoothstep", "smo"},
        {"smooths", {}, "smoothstep", "smooths"},
        {"smo", {Qt::Key_Return}, "", "smo\n"},
        {"smo", {Qt::Key_Tab}, "", "smo\t"},
        {"smo", {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, "", "smoothed"},
        {"smo", {Qt::Key_Up, Qt::Key_Tab}, "", "smoothstep"},
        {"SMO", {Qt::Key_Down, Qt::Key_Enter}, "", "smooth"},
        {"smo", {Qt::Key_Escape, Qt::Key_O}, "", "smoo"},
        {"smo", {Qt::Key_Left}, "", "smo"},
        {"smo;", {}, "", "smo;"},
        {"smoo", {Qt::Key_Backspace, Qt::Key_Backspace}, "", "sm"},
        {"// smo", {}, "", "// smo"},
        {"a.smo", {}, "", "a.smo"},
        {"1smo", {}, "", "1smo"},
    };
    for (const auto& row : cases) {
        Load(QString());
        Type(Latin(row.typed));
        press(row.keys);
        EXPECT_EQ(Stored().toStdString(), row.stored) << row.typed;
        if (row.keys.size() != 2 || row.keys.back() != Qt::Key_Backspace) {
            EXPECT_EQ(rows(), row.shown) << row.typed;
        }
    }
    Load(QString());
    Type(Latin("smo"));
    press({Qt::Key_Down, Qt::Key_Return});
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), Latin("smo")) << "one step";
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), QString());
    Type(Latin("i"));
    Key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_NE(rows().find("iTime"), std::string::npos);
    Editor()->moveCursor(QTextCursor::Start);
    EXPECT_EQ(rows(), "") << "the caret has left the word";
}

TEST_F(EditorTest, AToolTipSaysWhatTheWordBelowTheMouseIs) {
    const QString none = Latin("-");  // what another widget has shown
    const auto tipAt = [&](const char* before, int sidePixels = 2) {
        QToolTip::showText(QPoint(1, 1), none, Editor()->viewport());
        QTextCursor place(Editor()->document());
        place.setPosition(int(Stored().indexOf(Latin(before)) + qstrlen(before)));
        const QPoint at = Editor()->cursorRect(place).center() + QPoint(sidePixels, 0);
        QHelpEvent event(QEvent::ToolTip, at, Editor()->viewport()->mapToGlobal(at));
        QApplication::sendEvent(Editor()->viewport(), &event);
        return QToolTip::text();
    };
    SetDocumentText(App()->project.documents[kStageCommon], Latin("#define TWICE(x) x<<1\n"));
    Load(Latin("float own(float a) { return a; }\nb = mix(own(1), TWICE(2), c); // clamp\nabs"));
    EXPECT_TRUE(tipAt("b = m").contains(u"genType mix(genType x, genType y, genType a)"));
    EXPECT_TRUE(tipAt("mix(o").contains(u"float own(float a)"));
    EXPECT_TRUE(tipAt("T").contains(u"#define TWICE(x) x&lt;&lt;1"));
    EXPECT_EQ(tipAt("// cl"), none) << "in a comment";
    EXPECT_EQ(tipAt("b "), none);
    EXPECT_TRUE(tipAt("clamp\nab").contains(u"without its sign"));
    EXPECT_EQ(tipAt("clamp\nabs", 60), none) << "right of the line's end";
    Key(Qt::Key_Left);
    EXPECT_TRUE(PumpUntil([] { return !QToolTip::isVisible(); }));
    Load(Latin("abs sin ") + Latin("a+").repeated(500000));
    const int start = test::ThreadCpuMs();
    EXPECT_TRUE(tipAt("abs s").contains(u"The sine"));
    EXPECT_LT(test::ThreadCpuMs() - start, 500);
    QToolTip::hideText();
}

TEST_F(EditorTest, TheBracketsBesideTheCaretAreMarked) {
    Load(Latin("f(a[1]);"));
    const auto marked = [this] {
        std::string places;
        for (const auto& mark : Editor()->extraSelections())
            places += std::to_string(mark.cursor.selectionStart()) + ' ';
        return places;
    };
    EXPECT_EQ(marked(), "");
    Select(7, 7);
    EXPECT_EQ(marked(), "1 6 ");
    Select(3, 4);
    EXPECT_EQ(marked(), "");
    Select(4, 4);
    EXPECT_EQ(marked(), "3 5 ");
    Key(Qt::Key_Delete);
    EXPECT_EQ(marked(), "3 4 ");
    Key(Qt::Key_Delete);
    EXPECT_EQ(marked(), "1 4 ") << "the one before the caret has lost its partner";
}

TEST_F(EditorTest, ViewsAreKeptForEachStage) {
    AddStage(App()->project, kStageCommon);
    Load(Latin("int abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz"
               "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz;\n")
             .repeated(300));
    const int normal = Editor()->fontMetrics().height();
    for (int i = 0; i < 5; ++i)
        Wheel(Qt::ControlModifier, 120);
    EXPECT_EQ(Editor()->ZoomPercent(), 150);
    EXPECT_GT(Editor()->fontMetrics().height(), normal);
    Editor()->GoToLine(200);
    Key(Qt::Key_End);
    Type(Latin(" // longer than the others"));
    Key(Qt::Key_Home);
    Key(Qt::Key_End, Qt::ShiftModifier);
    const QTextCursor cursor = Editor()->textCursor();
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    const int top = Editor()->verticalScrollBar()->value();
    const int left = Editor()->horizontalScrollBar()->value();
    ASSERT_GT(left, 0);

    SelectStage(App()->project, kStageCommon);
    EXPECT_EQ(Editor()->ZoomPercent(), 150) << "a stage that was never left takes the zoom as it is";
    EXPECT_EQ(Editor()->textCursor().position(), 0);
    Wheel(Qt::ControlModifier, -120);
    SelectStage(App()->project, kStageImage);
    QCoreApplication::processEvents();  // the gutter gets its width
    EXPECT_EQ(Editor()->ZoomPercent(), 150);
    EXPECT_EQ(Editor()->textCursor().selectionStart(), start);
    EXPECT_EQ(Editor()->textCursor().selectionEnd(), end);
    EXPECT_EQ(Editor()->verticalScrollBar()->value(), top);
    EXPECT_EQ(Editor()->horizontalScrollBar()->value(), left);
    EXPECT_FALSE(Editor()->CanUndo()) << "undo is for the text that is shown";
    SelectStage(App()->project, kStageCommon);
    EXPECT_EQ(Editor()->ZoomPercent(), 140);
    for (int i = 0; i < 100; ++i)
        Wheel(Qt::ControlModifier, -120);
    EXPECT_EQ(Editor()->ZoomPercent(), 20);

    // A view goes with its text.
    const auto moveAside = [this] {
        Editor()->selectAll();
        return Editor()->textCursor().hasSelection();
    };
    ASSERT_TRUE(moveAside());
    RemoveStage(App()->project, kStageCommon);
    AddStage(App()->project, kStageCommon);
    SelectStage(App()->project, kStageCommon);
    EXPECT_FALSE(Editor()->textCursor().hasSelection()) << "removed and added";
    ASSERT_TRUE(moveAside());
    SelectStage(App()->project, kStageImage);
    SelectStage(App()->project, kStageCommon);
    Type(Latin("x"));
    ASSERT_TRUE(moveAside());
    Run(kCmdNew);
    ASSERT_TRUE(RestorePreviousProject(App()->project));
    EXPECT_FALSE(Editor()->textCursor().hasSelection()) << "thrown away and brought back";
}

TEST_F(EditorTest, AJumpOutOfViewPutsTheLineInTheMiddle) {
    Load(Latin("int a;\n").repeated(400));
    const auto lines = Editor()->VisibleLines();
    ASSERT_GT(lines.size(), 12U);
    EXPECT_EQ(lines[1].top - lines[0].top, lines[0].height) << "rows of the gutter leave no gap";
    const int whole = Editor()->viewport()->height() / lines[0].height;
    Editor()->GoToLine(whole + 1);
    EXPECT_EQ(Editor()->verticalScrollBar()->value(), whole - whole / 2);
}

TEST_F(EditorTest, TheGutterKeepsItsFontWhateverTheWindowsSize) {
    auto* gutter = window->findChild<LineGutter*>();
    const auto picture = [gutter] { return gutter->grab(QRect(0, 0, gutter->width(), 60)).toImage(); };
    const QImage before = picture();
    const QFont formFont(QStringLiteral("Sans"), 30);
    gutter->setFont(formFont);  // as the scaling of the form does
    EXPECT_EQ(picture(), before);
}

// Clicks, keys and colours in lines that the editor lays out by itself.
TEST_F(EditorTest, LongLinesAreEditedLikeOthers) {
    const QString text = Latin("int\ta = 1; // b") + QString(QChar(0)) + QString(QChar(0x4e2d)) + u'\n';
    const QString line = (text.chopped(1) + Latin("*/ /* ")).repeated(2000);
    Load(text + line + u'\n' + text);
    const auto caretIsSeen = [this] { return Editor()->viewport()->rect().contains(Editor()->cursorRect()); };
    const auto place = [this] { return Editor()->textCursor().positionInBlock(); };
    Editor()->GoToLine(2);
    Key(Qt::Key_End);
    EXPECT_EQ(place(), int(line.size()));
    EXPECT_TRUE(caretIsSeen());
    Type(Latin("vec2 "));
    EXPECT_EQ(Editor()->textCursor().block().text(), line + Latin("vec2 "));
    EXPECT_TRUE(caretIsSeen());
    Key(Qt::Key_Up);
    EXPECT_EQ(Editor()->CaretLine(), 1);
    EXPECT_EQ(place(), int(text.size()) - 1);
    Key(Qt::Key_Down);
    EXPECT_EQ(place(), int(line.size()) + 5) << "the place of the first key counts";

    Load(Latin("int abc = 1; ").repeated(8000) + Latin("\nint b;"));
    QTextCursor cursor = Editor()->textCursor();
    for (const int column : {3, 511, 512, 513, 60000, 103998}) {
        cursor.setPosition(column);
        Editor()->setTextCursor(cursor);
        ASSERT_TRUE(caretIsSeen()) << column;
        QTextCursor before = cursor;
        before.setPosition(column - 2);
        QTest::mouseClick(Editor()->viewport(), Qt::LeftButton, {}, Editor()->cursorRect(before).center());
        EXPECT_EQ(place(), column - 2);
    }
    Paint();
    const QImage seen = Editor()->viewport()->grab().toImage();
    bool hasType = false;
    for (int x = 0; x < seen.width(); ++x)
        for (int y = 0; y < Editor()->LineHeight(); ++y)
            hasType = hasType || seen.pixelColor(x, y) == FromBgr(kType);
    EXPECT_TRUE(hasType) << "coloured to its end";
}

TEST(LongLineTest, EditsCostOnlyWhatTheyTouch) {
    std::mt19937 random(3);
    const auto below = [&random](qsizetype limit) { return int(random() % unsigned(limit)); };
    LetterWidths letters(CodeFont(), 40);
    LongLine line;
    QString text = Latin("vec4 a = b; ").repeated(1000);
    line.SetText(text, -1, 0, letters);
    const QString pieces[] = {Latin("x"), Latin("\t\t"),          Latin("a").repeated(700),
                              QString(),  QString(QChar(0x4e2d)), Latin("\t.").repeated(40)};
    for (int i = 0; i < 400; ++i) {
        const int column = below(text.size());
        const QString& come = pieces[below(std::size(pieces))];
        text.replace(column, std::min(below(30), int(text.size()) - column), come);
        line.SetText(text, column, int(come.size()), letters);
        if (i % 20 != 0) continue;
        LongLine fresh;
        fresh.SetText(text, -1, 0, letters);
        ASSERT_DOUBLE_EQ(line.Width(), fresh.Width()) << i;
        for (int j = 0; j < 20; ++j) {
            const int at = below(text.size() + 1);
            ASSERT_NEAR(line.PlaceOf(at, letters), fresh.PlaceOf(at, letters), 0.1);
            const int found = line.ColumnAt(line.PlaceOf(at, letters), letters);
            ASSERT_NEAR(line.PlaceOf(found, letters), line.PlaceOf(at, letters), 0.1);
        }
    }
}

TEST_F(EditorTest, LinksOpenByCtrlAndClick) {
    Load(Latin("// https://example.org/x?y=1, and\nint a;\n"));
    QTextCursor inside(Editor()->document());
    inside.setPosition(10);
    const QPoint at = Editor()->cursorRect(inside).center();
    QTest::mouseClick(Editor()->viewport(), Qt::LeftButton, {}, at);
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(Editor()->textCursor().position(), 10) << "without Ctrl the click sets the caret";
    Key(Qt::Key_Home);
    QTest::mouseMove(Editor()->viewport(), at + QPoint(3, 0));
    QTest::mouseClick(Editor()->viewport(), Qt::LeftButton, Qt::ControlModifier, at);
    EXPECT_EQ(opened, QStringList(Latin("https://example.org/x?y=1")));
    EXPECT_EQ(Editor()->textCursor().position(), 0);
    inside.setPosition(36);
    QTest::mouseClick(Editor()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Editor()->cursorRect(inside).center());
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(EditorTest, TextsBeyondTheLimitAreRefused) {
    Load(Latin("kept"));
    Paste(QString(CodeView::kMaxTextLength - 3, u'x'));
    EXPECT_EQ(Stored(), Latin("kept"));
    auto* picture = new QMimeData;
    picture->setData(Latin("image/png"), "no text");
    QApplication::clipboard()->setMimeData(picture);
    Run(kCmdEditPaste);
    EXPECT_EQ(Stored(), Latin("kept"));
    QApplication::clipboard()->clear();
}

TEST_F(EditorTest, HardTextsAreTakenAndGivenBack) {
    const QString before = Latin("int a;\n");
    const QString rows[] = {
        Latin("    vec4 a = texture(iChannel0, uv); // b\n").repeated(120000),
        QString(1000000, QChar(0)),
        Latin("vec4 a = texture(iChannel0, uv * 3.0); ").repeated(52000),
        Latin("/* ").repeated(100000),
        Latin("/*\n").repeated(100000),
    };
    for (const QString& text : rows) {
        Load(before);
        const int start = test::ThreadCpuMs();
        Paste(text);
        Paint();
        Type(Latin("x"));
        Paint();
        EXPECT_EQ(Stored(), text + u'x' + before);
        Run(kCmdEditUndo);
        Run(kCmdEditUndo);
        Paint();
        EXPECT_EQ(Stored(), before);
        // Far above what it takes, and far below what a quadratic step would.
        EXPECT_LT(test::ThreadCpuMs() - start, 5000) << text.left(40).toStdString();
    }
}

// The stored text is kept by its changes; whatever is done to the editor, it is what stands there.
TEST_F(EditorTest, TheStoredTextFollowsEveryEdit) {
    std::mt19937 random(11);
    const auto below = [&random](int limit) { return int(random() % unsigned(limit)); };
    Load(Latin("void main() {\n\tint a;\n}\n"));
    QString told = Stored();
    QObject::connect(Editor(), &CodeView::TextEdited, Editor(), [&told](const TextEdit& edit) {
        EXPECT_EQ(told.sliced(edit.position, edit.removed.size()), edit.removed);
        told.replace(edit.position, edit.removed.size(), edit.stage.text.mid(edit.position, edit.added));
    });
    const QString pieces[] = {
        Latin("x"),          Latin("\n"),       Latin("{\n\t}"), Latin("\r\n"),
        Latin("\xA0\xE9/*"), QString(QChar(0)), Latin("*/"),     Latin("uniform int\n\n")};
    for (int i = 0; i < 1500; ++i) {
        const int length = Editor()->document()->characterCount() - 1;
        Select(below(length + 1), below(3) ? Editor()->textCursor().anchor() : below(length + 1));
        switch (below(11)) {
            case 0:
                Key(Qt::Key_Return);
                break;
            case 1:
                Key(Qt::Key_Backspace);
                break;
            case 2:
                Key(Qt::Key_Delete, below(2) ? Qt::ControlModifier : Qt::NoModifier);
                break;
            case 3:
                Key(Qt::Key_Tab, below(2) ? Qt::ShiftModifier : Qt::NoModifier);
                break;
            case 4:
            case 5:
                Run(kCmdEditUndo);
                break;
            case 6:
                Editor()->redo();
                break;
            case 7:
                Run(kCmdIndentSelection);
                break;
            case 8:
                Type(Latin("}"));
                break;
            default:
                Paste(pieces[below(int(std::size(pieces)))]);
                break;
        }
        if (i % 50 == 0) Paint();
        QString shown = Editor()->document()->toRawText();
        shown.replace(QChar::ParagraphSeparator, u'\n');
        ASSERT_EQ(Stored(), shown) << "edit " << i;
        ASSERT_EQ(told, shown) << "edit " << i;
        ASSERT_EQ(Text("caretStatusText"), Editor()->CaretStatus());
        ASSERT_EQ(App()->project.currentDocument->length, uint32_t(shown.size()));
    }
    EXPECT_TRUE(Editor()->RefreshStageText());
    EXPECT_EQ(App()->project.currentDocument->commentMap, BuildCommentMap(Stored()));
}

}  // namespace
}  // namespace pixelgrove
