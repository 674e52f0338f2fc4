// A main window on the display, with the default project, over fresh global records. Questions and file
// dialogs are answered from fields of the fixture.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "core/Commands.h"
#include "core/ProjectModel.h"
#include "support/DisplayTest.h"
#include "ui/CodeView.h"
#include "ui/MainWindow.h"

namespace pixelgrove {

class WindowTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!App()) return;
        shaderModified = false;
        MakeWindow({});
    }

    void TearDown() override {
        if (!App()) return;
        window.reset();
        ClearProject(false);
        DisplayTest::TearDown();
    }

    void MakeWindow(const QString& projectFile) {
        window.reset();
        ClearProject(false);
        window = std::make_unique<MainWindow>();
        window->Projects().dialogs = {[this](const QString& caption, const QString& text) {
                                          ++questions;
                                          lastCaption = caption;
                                          lastQuestion = text;
                                          return answer;
                                      },
                                      [this](const QString&) { return chosenPath; },
                                      [this](const QString&) { return chosenPath; }};
        window->OpenInitialProject(projectFile);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

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
    void Run(int commandId) const { window->SendCommand(commandId, 0); }
    void ReplaceText(const QString& text) const {
        Editor()->selectAll();
        Editor()->insertPlainText(text);
    }
    QString FileWith(const QByteArray& bytes) {
        const QString path = folder.filePath(QStringLiteral("project%1.json").arg(++filesMade));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
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

    std::unique_ptr<MainWindow> window;
    bool answer = false;
    int questions = 0;
    QString lastCaption, lastQuestion, chosenPath;
    QTemporaryDir folder;
    int filesMade = 0;
};

}  // namespace pixelgrove
