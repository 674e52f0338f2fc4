// Find and replace: the dialogs, what their buttons do in the editor, and the texts that they share.
#include "support/CpuTime.h"
#include "ui/editor/FindReplace.h"

#include <QAbstractButton>

#include "WindowFixture.h"

namespace pixelgrove {
namespace {

class FindReplaceTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (!window) return;
        window->Projects().dialogs.inform = [this](QWidget& owner, const QString& caption,
                                                   const QString& text) {
            messages.append(caption + QStringLiteral(": ") + text);
            messageOwner = &owner;
        };
    }

    QList<FindDialog*> Dialogs() const { return window->findChildren<FindDialog*>(); }
    // Of a new dialog.
    FindDialog* Open(bool replace) {
        Run(replace ? kCmdReplace : kCmdFind);
        const QList<FindDialog*> dialogs = Dialogs();
        EXPECT_FALSE(dialogs.isEmpty());
        return dialogs.isEmpty() ? nullptr : dialogs.back();
    }
    static QLineEdit* Edit(FindDialog* dialog, const char* name) {
        return dialog->findChild<QLineEdit*>(QLatin1String(name));
    }
    static QAbstractButton* Button(FindDialog* dialog, const char* name) {
        return dialog->findChild<QAbstractButton*>(QLatin1String(name));
    }
    // That of the program: a dialog counts as active already while its owner is.
    // And keeps it: a window manager may pass it on once more while windows come and go.
    static bool WaitForFocus(const QWidget* control) {
        for (int i = 0; i < 10; ++i) {
            if (!PumpUntil([control] { return control->hasFocus(); })) return false;
            PumpFor(60);
            if (control->hasFocus()) return true;
        }
        return false;
    }
    static QString What(FindDialog* dialog) { return Edit(dialog, "findEdit")->text(); }
    // "anchor-position".
    std::string Selection() const {
        const QTextCursor cursor = Editor()->textCursor();
        return std::to_string(cursor.anchor()) + '-' + std::to_string(cursor.position());
    }
    std::string Shown() const { return Editor()->toPlainText().toStdString(); }

    QStringList messages;
    QWidget* messageOwner = nullptr;
};

TEST_F(FindReplaceTest, TheKeysOpenADialogAndTypeNothing) {
    const std::string text = Shown();
    for (const auto& [key, title] : {std::pair(Qt::Key_F, u"Find"), std::pair(Qt::Key_H, u"Replace")}) {
        window->activateWindow();
        ASSERT_TRUE(WaitForFocus(Editor()));
        QTest::keyClick(Editor(), key, Qt::ControlModifier);
        ASSERT_EQ(Dialogs().size(), 1);
        FindDialog* dialog = Dialogs()[0];
        EXPECT_EQ(dialog->windowTitle(), QString::fromUtf16(title));
        ASSERT_TRUE(WaitForFocus(Edit(dialog, "findEdit")));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(PumpUntil([this] { return Dialogs().isEmpty(); }));
    }
    EXPECT_EQ(Shown(), text);
}

TEST_F(FindReplaceTest, EnterFindsNextAndTheEditorTakesTheFocus) {
    ReplaceText(QString(300, u'\n') + QStringLiteral("needle"));
    Select(0, 0);
    FindDialog* dialog = Open(false);
    ASSERT_TRUE(WaitForFocus(Edit(dialog, "findEdit")));
    QTest::keyClicks(dialog->focusWidget(), QStringLiteral("NEEDLE"));
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Selection(), "300-306");
    EXPECT_TRUE(Editor()->viewport()->rect().contains(Editor()->cursorRect()));
    EXPECT_TRUE(WaitForFocus(Editor()));
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(FindReplaceTest, FindNextFollowsTheOptions) {
    const QString text = QStringLiteral("ab Ab abc\nab");
    const struct {
        const char* options;  // their buttons, clicked in the new dialog
        std::vector<std::string> selections;
    } cases[] = {
        {"", {"3-5", "6-8", "10-12", "0-2", "3-5"}},
        {"matchCaseCheck", {"6-8", "10-12", "0-2"}},
        {"wrapAroundCheck", {"3-5", "6-8", "10-12", "10-12"}},
        {"upRadio", {"10-12", "6-8", "3-5", "0-2", "10-12"}},
        {"upRadio wrapAroundCheck", {"0-2"}},
        {"upRadio wholeWordCheck", {"10-12", "3-5"}},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.options);
        ReplaceText(text);
        Select(0, 2);
        FindDialog* dialog = Open(false);
        EXPECT_EQ(What(dialog), QStringLiteral("ab"));
        for (const QString& option : QString::fromLatin1(row.options).split(u' ', Qt::SkipEmptyParts))
            Button(dialog, option.toLatin1())->click();
        for (const std::string& selection : row.selections) {
            Button(dialog, "findNextButton")->click();
            EXPECT_EQ(Selection(), selection);
        }
        dialog->close();
    }
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(Editor()->toPlainText(), text);
}

TEST_F(FindReplaceTest, F3GoesOnWithTheLastSearch) {
    ReplaceText(QStringLiteral("ab Ab abc ab"));
    Select(0, 0);
    const auto press = [this](Qt::KeyboardModifiers modifiers) {
        window->activateWindow();
        Editor()->setFocus();
        ASSERT_TRUE(WaitForFocus(Editor()));
        QTest::keyClick(Editor(), Qt::Key_F3, modifiers);
    };
    press({});
    ASSERT_EQ(Dialogs().size(), 1) << "there is nothing to look for";
    FindDialog* dialog = Dialogs()[0];
    Edit(dialog, "findEdit")->setText(QStringLiteral("ab"));
    Button(dialog, "matchCaseCheck")->click();
    Button(dialog, "findNextButton")->click();
    dialog->close();
    EXPECT_EQ(Selection(), "6-8");
    for (const char* next : {"10-12", "0-2"}) {
        press({});
        EXPECT_EQ(Selection(), next);
    }
    press(Qt::ShiftModifier);
    EXPECT_EQ(Selection(), "10-12");
}

TEST_F(FindReplaceTest, ReplaceMovesOnAndEachStepIsUndone) {
    ReplaceText(QStringLiteral("ab ab ab"));
    Select(0, 2);
    FindDialog* dialog = Open(true);
    Edit(dialog, "replaceEdit")->setText(QStringLiteral("xyz"));
    QAbstractButton* replace = Button(dialog, "replaceButton");
    replace->click();
    EXPECT_EQ(Shown(), "xyz ab ab");
    EXPECT_EQ(Selection(), "4-6");
    for (int i = 0; i < 3; ++i)  // for the last one nothing is selected, nor found
        replace->click();
    EXPECT_EQ(Shown(), "xyz xyz xyz");
    EXPECT_EQ(Selection(), "11-11");
    Editor()->undo();
    EXPECT_EQ(Shown(), "xyz xyz ab");
    Editor()->undo();
    EXPECT_EQ(Shown(), "xyz ab ab");
    // Without a selection it finds first.
    Select(0, 0);
    replace->click();
    EXPECT_EQ(Shown(), "xyz ab ab");
    EXPECT_EQ(Selection(), "4-6");
}

TEST_F(FindReplaceTest, ReplaceAllTakesTheWholeTextInOneStep) {
    const struct {
        const char16_t *text, *what, *with, *result, *message;
    } cases[] = {
        {u"ab Ab\nabc", u"ab", u"abab", u"abab abab\nababc", u"3 occurrences of the text were replaced."},
        {u"aaa", u"aa", u"b", u"ba", u"1 occurrences of the text were replaced."},
        {u"a\u00A0b\nb", u"b", u"c\nd", u"a\u00A0c\nd\nc\nd", u"2 occurrences of the text were replaced."},
        {u"ab", u"c", u"x", u"ab", u"No occurrences of the text were found."},
    };
    for (const auto& row : cases) {
        const QString text = QString::fromUtf16(row.text);
        SCOPED_TRACE(text.toStdString());
        ReplaceText(text);
        Select(int(text.size()), int(text.size()));
        messages.clear();
        FindDialog* dialog = Open(true);
        Edit(dialog, "findEdit")->setText(QString::fromUtf16(row.what));
        Edit(dialog, "replaceEdit")->setText(QString::fromUtf16(row.with));
        Button(dialog, "replaceAllButton")->click();
        EXPECT_EQ(App()->project.currentDocument->text, QString::fromUtf16(row.result));
        EXPECT_EQ(messages, QStringList(QStringLiteral("Replace All: ") + QString::fromUtf16(row.message)));
        EXPECT_EQ(messageOwner, dialog);
        if (App()->project.currentDocument->text != text) Editor()->undo();
        EXPECT_EQ(App()->project.currentDocument->text, text);
        dialog->close();
    }
}

TEST_F(FindReplaceTest, DialogsShareTheirTextsButNotTheirOptions) {
    ReplaceText(QStringLiteral("one\ntwo three"));
    Select(2, 6);
    FindDialog* find = Open(false);
    EXPECT_EQ(What(find), QStringLiteral("e\ntw"));
    Select(0, 0);
    Button(find, "matchCaseCheck")->click();
    Button(find, "findNextButton")->click();
    EXPECT_EQ(Selection(), "2-6") << "across lines";
    Edit(find, "findEdit")->setText(QStringLiteral("three"));
    Select(0, 0);

    FindDialog* replace = Open(true);
    ASSERT_EQ(Dialogs().size(), 2);
    EXPECT_NE(replace->pos(), find->pos());
    EXPECT_EQ(What(replace), QStringLiteral("three"));
    EXPECT_FALSE(Button(replace, "matchCaseCheck")->isChecked());
    EXPECT_TRUE(Button(replace, "wrapAroundCheck")->isChecked());
    Edit(replace, "replaceEdit")->setText(QStringLiteral("four"));
    Edit(replace, "findEdit")->setText(QStringLiteral("one"));
    // Each searches for its own.
    Button(find, "findNextButton")->click();
    EXPECT_EQ(Selection(), "8-13");
    Select(0, 0);
    EXPECT_EQ(Edit(Open(true), "replaceEdit")->text(), QStringLiteral("four"));
}

// What grows with the square of the hits would take minutes.
TEST_F(FindReplaceTest, ManyHitsAreReplacedAtOnce) {
    QString text;
    for (int i = 0; i < 100000; ++i)
        text += QStringLiteral("vec3 colour = mix(uv.xyy, background, 0.25); // %1\n").arg(i);
    ReplaceText(text);
    FindDialog* dialog = Open(true);
    Edit(dialog, "findEdit")->setText(QStringLiteral("Colour"));
    Edit(dialog, "replaceEdit")->setText(QStringLiteral("tone"));
    const int start = test::ThreadCpuMs();
    Button(dialog, "replaceAllButton")->click();
    EXPECT_LT(test::ThreadCpuMs() - start, 20000);
    EXPECT_EQ(messages.value(0),
              QStringLiteral("Replace All: 100000 occurrences of the text were replaced."));
    EXPECT_EQ(Editor()->toPlainText(), text.replace(QStringLiteral("colour"), QStringLiteral("tone")));
}

}  // namespace
}  // namespace pixelgrove
