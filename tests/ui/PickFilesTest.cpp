// The two file pickers: which question each asks, and the real dialog's filters and suffixes.
#include "ui/channels/PickFiles.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>
#include <QTimer>

#include "WindowFixture.h"

namespace pixelgrove {
namespace {

struct Asked {
    UserDialogs dialogs;
    FileQuestion question;
    QString answer;
    Asked() {
        dialogs.askForFile = [this](const FileQuestion& asked) {
            question = asked;
            return answer;
        };
    }
};

TEST(PickFile, FiltersAndSuffixFollowTheFormOfTheFilter) {
    const QString longFilter = u'*' + QString(130, u'x');
    const struct {
        const char* name;
        QString filter, path;
        QStringList shown;
        QString suffix;
    } cases[] = {
        {"pairs",
         QStringLiteral("Volume Files (*.bin)\t*.bin; *.vol\tAll Files (*.*)\t*.*\t\t"),
         {},
         {QStringLiteral("Volume Files (*.bin *.vol)"), QStringLiteral("All Files (*)")},
         QStringLiteral("bin")},
        {"pattern",
         QStringLiteral("*.glsl"),
         {},
         {QStringLiteral("*.glsl Files (*.glsl)")},
         QStringLiteral("glsl")},
        {"extension of the path",
         {},
         QStringLiteral("C:\\a.b\\x.json"),
         {QStringLiteral("json Files (*.json)")},
         {}},
        {"path without one", {}, QStringLiteral("/a.b/x"), {QStringLiteral("All Files (*)")}, {}},
        {"path that ends in a dot", {}, QStringLiteral("/a/x."), {QStringLiteral("All Files (*)")}, {}},
        {"too long to be filled in", longFilter, {}, {QStringLiteral("All Files (*)")}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Asked asked;
        asked.answer = QStringLiteral("/chosen");
        EXPECT_EQ(PickFile(asked.dialogs, c.path, QStringLiteral("/start\\here"), c.filter, false),
                  asked.answer);
        EXPECT_EQ(asked.question.filters, c.shown);
        EXPECT_EQ(asked.question.defaultSuffix, c.suffix);
        EXPECT_EQ(asked.question.caption, QStringLiteral("Open"));
        EXPECT_EQ(asked.question.folder, QStringLiteral("/start/here"));
        EXPECT_EQ(asked.question.fileName, QString()) << "a path to open is not suggested";
        EXPECT_FALSE(asked.question.forSaving);
    }
    Asked asked;
    EXPECT_EQ(PickFile(asked.dialogs, QStringLiteral("x.bin"), {}, {}, true), QString());
    EXPECT_EQ(asked.question.caption, QStringLiteral("Save As"));
    EXPECT_EQ(asked.question.fileName, QStringLiteral("x.bin"));
    EXPECT_TRUE(asked.question.forSaving);
}

TEST(PickImageFile, TheExtensionOfThePathChoosesTheFilter) {
    const struct {
        const char* path;
        const char* shown;
        const char* suffix;
    } cases[] = {
        {"/a/x.DIB", "BMP (*.bmp *.dib *.rle)", "bmp"},
        {"x.png", "PNG (*.png)", "pmg"},
        {"x.1", "Animation (*.1)", "1"},
        {"x.webp", "Pictures (*.jpg *.jpeg *.tif *.tiff *.png *.gif *.bmp *.dib *.rle)", "png"},
        {"/a.png/x", "Pictures (*.jpg *.jpeg *.tif *.tiff *.png *.gif *.bmp *.dib *.rle)", "png"},
        {"", "Pictures (*.jpg *.jpeg *.tif *.tiff *.png *.gif *.bmp *.dib *.rle)", "png"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        Asked asked;
        EXPECT_EQ(PickImageFile(asked.dialogs, QString::fromLatin1(c.path), {}), QString());
        const FileQuestion& question = asked.question;
        EXPECT_EQ(question.filters.value(question.filterIndex), QString::fromLatin1(c.shown));
        EXPECT_EQ(question.suffixes.value(question.filterIndex), QString::fromLatin1(c.suffix));
        EXPECT_EQ(question.filters.size(), question.suffixes.size());
        EXPECT_EQ(question.filters.constLast(), QStringLiteral("All files (*)"));
        EXPECT_EQ(question.caption, QStringLiteral("Open Image"));
        EXPECT_EQ(question.fileName, QString());
        EXPECT_EQ(question.folder, QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    }
    Asked asked;
    asked.answer = QStringLiteral("/pictures/old/x.png");
    EXPECT_EQ(PickImageFile(asked.dialogs, {}, QStringLiteral("/elsewhere")), asked.answer);
    EXPECT_EQ(asked.question.folder, QStringLiteral("/elsewhere"));
    EXPECT_EQ(LastImageFolder(), QStringLiteral("/pictures/old"));
    asked.answer.clear();
    PickImageFile(asked.dialogs, {}, {});
    EXPECT_EQ(LastImageFolder(), QStringLiteral("/pictures/old")) << "a cancelled choice leaves it";
}

class PickDialogTest : public DisplayTest {
  protected:
    void Make(const QString& name) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    // Runs the gesture in the file dialog that waits, then its other messages are closed and it is cancelled.
    void InDialog(const std::function<void(QFileDialog&)>& gesture) {
        QTimer::singleShot(300, qApp, [this, gesture] {
            auto* modal = QApplication::activeModalWidget();
            auto* dialog = modal ? modal->findChild<QFileDialog*>() : nullptr;
            ASSERT_NE(dialog, nullptr);
            QTimer answer;
            QObject::connect(&answer, &QTimer::timeout, [this, modal] {
                QWidget* top = QApplication::activeModalWidget();
                if (!top || top == modal) return;
                messages += top->findChild<QLabel*>(QStringLiteral("questionText"))->text() + u'\n';
                top->findChild<QPushButton*>(QStringLiteral("okButton"))->click();
            });
            answer.start(20);
            const QPointer<QWidget> alive = modal;
            gesture(*dialog);
            if (alive && alive->isVisible()) alive->close();
        });
    }
    static void Type(QFileDialog& dialog, const QString& name) {
        auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        edit->setText(name);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    QTemporaryDir folder;
    QString messages;
};

TEST_F(PickDialogTest, ATypedNameGetsTheSuffixOfTheShownFilterUnlessItFitsAFile) {
    for (const auto& name : {QStringLiteral("sky.pmg"), QStringLiteral("sky.bmp"), QStringLiteral("bare"),
                             QStringLiteral("bare.bmp"), QStringLiteral("x.png")})
        Make(name);
    const UserDialogs dialogs = MakeUserDialogs(nullptr);
    const auto choose = [&](const char* path, const char* filter, const QString& typed) {
        messages.clear();
        InDialog([&](QFileDialog& dialog) {
            if (*filter) {
                auto* combo = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
                const int index = combo->findText(QString::fromLatin1(filter), Qt::MatchStartsWith);
                combo->setCurrentIndex(index);
                Q_EMIT combo->textActivated(combo->itemText(index));
            }
            Type(dialog, typed);
        });
        const QString chosen = PickImageFile(dialogs, QString::fromLatin1(path), folder.path());
        return chosen.isEmpty() ? messages : QDir(folder.path()).relativeFilePath(chosen);
    };
    EXPECT_EQ(choose("a.png", "", QStringLiteral("sky")), QStringLiteral("sky.pmg"));
    EXPECT_EQ(choose("a.png", "BMP", QStringLiteral("sky")), QStringLiteral("sky.bmp"));
    EXPECT_EQ(choose("a.bmp", "", QStringLiteral("bare")), QStringLiteral("bare"));
    EXPECT_EQ(choose("", "", QStringLiteral("x")), QStringLiteral("x.png"));
    EXPECT_EQ(choose("a.png", "", QStringLiteral("x")), QStringLiteral("x.pmg was not found.\n"));
    EXPECT_EQ(choose("", "All", QStringLiteral("x")), QStringLiteral("x was not found.\n"));
    EXPECT_EQ(choose("", "", QStringLiteral("no.such")), QStringLiteral("no.such was not found.\n"));
}

TEST_F(PickDialogTest, AFileIsSavedOnlyIntoAFolderThatExists) {
    const UserDialogs dialogs = MakeUserDialogs(nullptr);
    InDialog([&](QFileDialog& dialog) {
        Type(dialog, QStringLiteral("nowhere/x"));
        EXPECT_EQ(messages, folder.filePath(QStringLiteral("nowhere")) + QStringLiteral(" was not found.\n"));
        Type(dialog, QStringLiteral("x"));
    });
    EXPECT_EQ(PickFile(dialogs, {}, folder.path(), QStringLiteral("*.bin"), true),
              folder.filePath(QStringLiteral("x.bin")));
}

}  // namespace
}  // namespace pixelgrove
