#include "windows/widgets/Dialogs.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "support/DisplayTest.h"

namespace pixelgrove {
namespace {

// Runs the gesture once a dialog other than the given one waits, in the event loop of the call that follows.
void OnDialog(const std::function<void(FrameDialog&)>& gesture, const QWidget* other = nullptr) {
    auto* poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, gesture, other, tries = 0]() mutable {
        auto* dialog = qobject_cast<FrameDialog*>(QApplication::activeModalWidget());
        const bool there = dialog && dialog != other && dialog->isVisible();
        if (!there && ++tries < 1000) return;
        poll->stop();
        poll->deleteLater();
        if (!there) {
            ADD_FAILURE() << "no dialog";
            return;
        }
        // A window manager that still passes the focus on from the dialog before takes it away again.
        for (int i = 0; i < 20; ++i) {
            dialog->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
            PumpFor(20);
            if (dialog->isActiveWindow()) break;
        }
        EXPECT_TRUE(dialog->isActiveWindow());
        gesture(*dialog);
    });
    poll->start(5);
}

void Click(QWidget& dialog, const char* button) {
    auto* found = dialog.findChild<QPushButton*>(QLatin1String(button));
    ASSERT_TRUE(found) << button;
    QTest::mouseClick(found, Qt::LeftButton);
}

class DialogsTest : public DisplayTest {};

TEST_F(DialogsTest, EachGestureGivesItsAnswer) {
    const struct {
        const char* name;
        std::function<void(FrameDialog&)> gesture;
        Answer answer;
    } cases[] = {
        {"click Yes", [](FrameDialog& d) { Click(d, "yesButton"); }, Answer::Yes},
        {"click No", [](FrameDialog& d) { Click(d, "noButton"); }, Answer::No},
        {"click Cancel", [](FrameDialog& d) { Click(d, "cancelButton"); }, Answer::Cancel},
        {"Escape", [](FrameDialog& d) { QTest::keyClick(d.windowHandle(), Qt::Key_Escape); }, Answer::Cancel},
        {"Enter on the default one",
         [](FrameDialog& d) { QTest::keyClick(d.windowHandle(), Qt::Key_Return); }, Answer::Cancel},
        {"Tab to Yes, Enter",
         [](FrameDialog& d) {
             QTest::keyClick(d.windowHandle(), Qt::Key_Tab);
             QTest::keyClick(d.windowHandle(), Qt::Key_Return);
         },
         Answer::Yes},
        {"Y", [](FrameDialog& d) { QTest::keyClick(d.windowHandle(), Qt::Key_Y); }, Answer::Yes},
        {"Alt+N", [](FrameDialog& d) { QTest::keyClick(d.windowHandle(), Qt::Key_N, Qt::AltModifier); },
         Answer::No},
        {"close", [](FrameDialog& d) { d.close(); }, Answer::Cancel},
    };
    QWidget owner;
    owner.setGeometry(300, 300, 400, 300);
    owner.show();
    for (const auto& step : cases) {
        SCOPED_TRACE(step.name);
        OnDialog([&](FrameDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Pixelgrove"));
            EXPECT_EQ(dialog.Client()->objectName(), QStringLiteral("questionForm"));
            step.gesture(dialog);
        });
        EXPECT_EQ(AskYesNoCancel(&owner, QStringLiteral("Pixelgrove"), QStringLiteral("Save <b>it</b>?")),
                  step.answer);
    }
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(DialogsTest, ADialogThatGoesWithItsOwnerIsNotAccepted) {
    auto* owner = new QWidget;
    owner->show();
    OnDialog([&](FrameDialog&) { delete owner; });
    EXPECT_EQ(AskYesNoCancel(owner, QString(), QStringLiteral("?")), Answer::Cancel);
}

class FileQuestionTest : public DialogsTest {
  protected:
    FileQuestion Question() const {
        FileQuestion question;
        question.caption = QStringLiteral("Choose");
        question.folder = folder.path();
        question.filters = {QStringLiteral("JSON Files (*.json)"), QStringLiteral("All Files (*)")};
        question.defaultSuffix = QStringLiteral("json");
        question.forSaving = true;
        return question;
    }
    QString Path(const char* name) const { return folder.filePath(QLatin1String(name)); }
    void Make(const char* name) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    static QLineEdit* NameEdit(FrameDialog& dialog) {
        return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    }
    static void Type(FrameDialog& dialog, const char* name) {
        QLineEdit* edit = NameEdit(dialog);
        ASSERT_TRUE(edit);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QLatin1String(name));
        QTest::keyClick(edit, Qt::Key_Return);
    }

    QTemporaryDir folder;
};

TEST_F(FileQuestionTest, AnExistingFileIsReplacedOnlyAfterYes) {
    Make("there.json");
    int questions = 0;
    OnDialog([&](FrameDialog& dialog) {
        OnDialog(
            [&](FrameDialog& question) {
                EXPECT_EQ(question.findChild<QLabel*>(QStringLiteral("questionText"))->text(),
                          QStringLiteral("there.json already exists.\nDo you want to replace it?"));
                ++questions;
                Click(question, "noButton");
            },
            &dialog);
        Type(dialog, "there");  // the suffix is part of the check
        EXPECT_EQ(questions, 1);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(dialog.findChild<QFileDialog*>()->isVisible());
        OnDialog(
            [&](FrameDialog& question) {
                ++questions;
                Click(question, "yesButton");
            },
            &dialog);
        Type(dialog, "there.json");
    });
    EXPECT_EQ(AskForFile(nullptr, Question()), Path("there.json"));
    EXPECT_EQ(questions, 2);
}

TEST_F(FileQuestionTest, TheFolderIsMadeAndTheNameSuggested) {
    FileQuestion question = Question();
    question.folder = Path("a/b");
    question.fileName = QStringLiteral("Untitled.json");
    OnDialog([&](FrameDialog& dialog) {
        EXPECT_EQ(NameEdit(dialog)->text(), QStringLiteral("Untitled.json"));
        Type(dialog, "new.txt");
    });
    EXPECT_EQ(AskForFile(nullptr, question), Path("a/b/new.txt"));
    EXPECT_TRUE(QFile::exists(question.folder));
}

}  // namespace
}  // namespace pixelgrove
