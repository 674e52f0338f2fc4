// A main window on the display, with the default project, over fresh global records. Questions and file
// dialogs are answered from fields of the fixture.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <memory>

#include "commands/Commands.h"
#include "platform/Files.h"
#include "project/ProjectModel.h"
#include "render/Player.h"
#include "support/DisplayTest.h"
#include "support/OwnSettings.h"
#include "support/ScratchFolders.h"
#include "ui/MainWindow.h"
#include "ui/editor/CodeView.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

// Image of one line, and a Common stage.
inline const QByteArray kTwoStageProject =
    R"({"Shader":{"ver":"0.1","info":{"id":"x","date":"0","viewed":0,"name":"Loaded","username":"u",
"description":"","likes":0,"published":0,"flags":0,"usePreview":0,"hasliked":0,"tags":[]},
"renderpass":[{"inputs":[],"outputs":[],"code":"void mainImage(out vec4 c,in vec2 p){c=vec4(1);}",
"name":"Image","description":"","type":"image"},
{"inputs":[],"outputs":[],"code":"// shared","name":"Common","description":"","type":"common"}]}})";

class WindowTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!App()) return;
        for (auto* list :
             {&App()->recent.recentFiles, &App()->recent.recentProjects, &App()->recent.recentPalettes})
            *list = std::make_unique<StringList>();
        MakeWindow({});
    }

    void TearDown() override {
        if (!App()) return;
        window.reset();
        ClearProject(App()->project, false);
        Windows().Clear();
        DisplayTest::TearDown();
    }

    void MakeWindow(const QString& projectFile) {
        window.reset();
        ClearProject(App()->project, false);
        window = std::make_unique<MainWindow>(*App(), player, settings);
        UserDialogs& dialogs = window->Projects().dialogs;
        dialogs.confirm = [this](const QString& caption, const QString& text) {
            ++questions;
            lastCaption = caption;
            lastQuestion = text;
            return answer;
        };
        dialogs.askForFile = [this](const FileQuestion& question) {
            fileQuestion = question;
            return chosenPath;
        };
        dialogs.openUrl = [this](const QUrl& url) { opened.append(url.toString(QUrl::FullyEncoded)); };
        dialogs.openTextEditor = [this](const QString& path, int line) {
            opened.append(path + u':' + QString::number(line));
        };
        window->OpenInitialProject(projectFile);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    // Null while it is closed.
    FrameWindow* OutputFrame() const { return Windows().Find(kOutputWin); }

    template <typename W>
    W* Control(const char* name) const {
        W* control = window->findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    // Of a label, button or line edit.
    QString Text(const char* name) const { return Control<QWidget>(name)->property("text").toString(); }
    CodeView* Editor() const { return Control<CodeView>("editor"); }
    QString Status() const { return Control<QPlainTextEdit>("statusText")->toPlainText(); }
    QString Title() const { return window->windowTitle(); }
    void Click(const char* name) const { QTest::mouseClick(Control<QWidget>(name), Qt::LeftButton); }
    void Run(int commandId) const { window->SendCommand(commandId); }
    void ReplaceText(const QString& text) const {
        Editor()->selectAll();
        Editor()->insertPlainText(text);
    }
    void Select(int anchor, int position) const {
        QTextCursor cursor = Editor()->textCursor();
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        Editor()->setTextCursor(cursor);
    }
    QString FileWith(const QByteArray& bytes, const QString& ending = QStringLiteral("json")) {
        QString path = folder.filePath(QStringLiteral("file%1.%2").arg(++filesMade).arg(ending));
        EXPECT_TRUE(WriteWholeFile(path, bytes));
        return path;
    }

    // The enabled ones of Play, Record, Pause, Stop, Start, by their first letters ("P", "R", "p", "S", "s").
    QString Enabled() const {
        QString letters;
        const std::pair<const char*, char> buttons[] = {{"playButton", 'P'},
                                                        {"recordButton", 'R'},
                                                        {"pauseButton", 'p'},
                                                        {"stopButton", 'S'},
                                                        {"startButton", 's'}};
        for (const auto& [name, letter] : buttons)
            if (Control<QPushButton>(name)->isEnabled()) letters += QLatin1Char(letter);
        return letters;
    }

    bool WaitRunning() const {
        return PumpUntil([this] { return Enabled() == QStringLiteral("RpSs"); });
    }
    bool PlayUntilRunning() const {
        Click("playButton");
        return WaitRunning();
    }

    test::ScratchFolders dataFolders;
    Player player;
    test::OwnSettings settings;
    std::unique_ptr<MainWindow> window;
    bool answer = false;
    int questions = 0;
    QString lastCaption, lastQuestion, chosenPath;
    FileQuestion fileQuestion;
    QStringList opened;  // addresses, and files with their lines
    QTemporaryDir folder;
    int filesMade = 0;
};

}  // namespace pixelgrove
