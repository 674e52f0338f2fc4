// What the editor's menu has for live controls: the generator above the editor, and values into its text.
#include <QTimer>

#include "WindowFixture.h"
#include "controls/Annotations.h"
#include "controls/LiveValues.h"
#include "core/CommentMap.h"

namespace pixelgrove {
namespace {

class ControlCommandsTest : public WindowTest {
  protected:
    std::string Stored() const { return App()->project.currentDocument->text.toStdString(); }
};

TEST_F(ControlCommandsTest, ALineGoesAboveTheCaretsLineAsOneStep) {
    const struct {
        int anchor, position;
        const char* text;
        int caret;
    } cases[] = {
        {0, 0, "line\none\ntwo\nthree", 5},    {1, 2, "oline\ne\ntwo\nthree", 6},
        {1, 6, "oline\no\nthree", 6},          {4, 4, "one\nline\ntwo\nthree", 9},
        {7, 7, "one\nline\ntwo\nthree", 9},    {10, 5, "one\nline\ntwo\nthree", 9},
        {13, 13, "one\ntwo\nline\nthree", 13},
    };
    const QString before = QStringLiteral("one\ntwo\nthree");
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        ReplaceText(before);
        Select(row.anchor, row.position);
        Editor()->InsertLine(QStringLiteral("line"));
        EXPECT_EQ(Stored(), row.text);
        EXPECT_EQ(Editor()->textCursor().position(), row.caret);
        EXPECT_FALSE(Editor()->textCursor().hasSelection());
        Run(kCmdEditUndo);
        EXPECT_EQ(Stored(), before.toStdString());
        Run(kCmdEditRedo);
        EXPECT_EQ(Stored(), row.text);
    }
}

TEST_F(ControlCommandsTest, TheGeneratorInsertsUntilItIsCancelledAndComesBackWhereItWas) {
    ReplaceText(QStringLiteral("one\ntwo"));
    Select(5, 5);
    QPoint place;
    for (const int round : {0, 1}) {
        bool closed = false;
        QTimer::singleShot(0, window.get(), [&] {
            FrameWindow* dialog = Windows().Find(kControlCreatorDlg);
            ASSERT_TRUE(dialog && QTest::qWaitForWindowExposed(dialog));
            EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Control Generator"));
            if (round == 0) {
                dialog->move(dialog->pos() + QPoint(31, 17));
                ASSERT_TRUE(PumpUntil([&] { return dialog->IsSettled(); }));
                place = dialog->pos();
            } else {
                EXPECT_EQ(dialog->pos(), place);
            }
            dialog->findChild<QLineEdit*>(QStringLiteral("nameEdit"))
                ->setText(QStringLiteral("g%1").arg(round));
            auto* insert = dialog->findChild<QPushButton*>(QStringLiteral("insertButton"));
            for (int i = 0; i < 2 - round; ++i)
                QTest::mouseClick(insert, Qt::LeftButton);
            ASSERT_TRUE(dialog->isVisible());
            QTest::mouseClick(dialog->findChild<QWidget*>(QStringLiteral("cancelButton")), Qt::LeftButton);
            closed = true;
        });
        Run(kCmdCreateControl);
        EXPECT_TRUE(closed);
        const WindowRecord* row = FindWindowRow(Windows().Layout().windows, kControlCreatorDlg);
        ASSERT_TRUE(row);
        EXPECT_FALSE(row->open);
    }
    const std::string line = ";\t// parent_node!child_node!grandchild_node: description [0.0..1.0, 0.5]\n";
    const std::string first = "one\nuniform float g0" + line + "uniform float g0" + line;
    EXPECT_EQ(Stored(), first + "uniform float g1" + line + "two");
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), first + "two");
}

TEST_F(ControlCommandsTest, ValuesGoIntoTheTextAndComeBackFromIt) {
    const QString text = QStringLiteral(
        "#define A 1 // a [0..9, 4]\n"
        "#define B x // b [x, @y]\n"
        "uniform float gain; // p: q [0.0..2.0, 1.0]\n");
    ReplaceText(text + QStringLiteral("selected"));
    ControlSet& controls = *Controls();
    ScanDefines(controls, text);
    ScanUniforms(controls, text, BuildCommentMap(text));
    ASSERT_EQ(controls.defineCount * 10 + controls.uniformCount, 22);
    controls.uniforms[1].range.value = 1.25f;

    Select(int(text.size()), int(text.size()) + 8);
    Run(kCmdInsertDefines);
    const std::string values = "#define A \t4\n#define B \ty\n#define gain \t1.250\n";
    EXPECT_EQ(Stored(), text.toStdString() + values);
    Run(kCmdEditUndo);
    EXPECT_EQ(Stored(), text.toStdString() + "selected") << "one step";
    Run(kCmdEditRedo);

    controls.defines[0].range.value = 7;
    controls.defines[1].combo.selection = 0;
    controls.uniforms[1].range.value = 0;
    const auto state = [&controls] {
        return QStringLiteral("%1 %2 %3")
            .arg(controls.defines[0].range.value)
            .arg(controls.defines[1].combo.selection)
            .arg(controls.uniforms[1].range.value);
    };
    Select(int(text.size()), int(text.size()));
    Run(kCmdLoadDefines);
    EXPECT_EQ(state(), QStringLiteral("7 0 0")) << "nothing is selected";
    // One character each of the second line and of the third; the first line's end isn't.
    Select(int(Stored().find("B \ty")), int(Stored().find("define gain")));
    Run(kCmdLoadDefines);
    EXPECT_EQ(state(), QStringLiteral("7 1 1.25"));
    // The frames have it.
    UniformTable table;
    UpdateUniformValues(table, 0);
    ASSERT_EQ(table.count, 2);
    EXPECT_FLOAT_EQ(table.values[1].floatValue, 1.25f);
    Select(int(Stored().size()), int(text.size()));
    Run(kCmdLoadDefines);
    EXPECT_EQ(state(), QStringLiteral("4 1 1.25"));
}

}  // namespace
}  // namespace pixelgrove
