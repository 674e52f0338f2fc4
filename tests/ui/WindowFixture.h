// A main window on the display, with the default project, over fresh global records. Questions and file
// dialogs are answered from fields of the fixture.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

#include "core/AppState.h"
#include "core/Commands.h"
#include "core/ProjectModel.h"
#include "ui/CodeView.h"
#include "ui/Display.h"
#include "ui/MainWindow.h"

namespace pixelgrove {

// Handles events until the condition holds; false after ten seconds.
inline bool PumpUntil(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 10000) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

class WindowTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!qApp) GTEST_SKIP() << qPrintable(MissingDisplayText());
        ASSERT_TRUE(AllocateGlobals());
        shaderModified = false;
        MakeWindow({});
    }

    void TearDown() override {
        if (!qApp || !App()) return;
        window.reset();
        ClearProject(false);
        FreeGlobals();
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
