// Recovery copies as the main window keeps and offers them. A window that goes without being closed stands
// for a process that died.
#include <QDir>
#include <atomic>

#include "platform/Files.h"
#include "recovery/RecoveryCopy.h"
#include "recovery/RecoveryFile.h"
#include "support/Engine.h"
#include "ui/WindowFixture.h"

namespace pixelgrove {
namespace {

class RecoveryTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (window) window->StartRecovery(Folder());
    }
    QString Folder() const { return folder.filePath(QStringLiteral("Recovery")); }
    QStringList Files(const char* pattern = "*.json") const {
        return QDir(Folder()).entryList({QString::fromLatin1(pattern)}, QDir::Files);
    }

  public:
    // The Image text of the only copy; null without one.
    QString KeptText() const {
        const auto bytes = ReadWholeFile(Folder() + u'/' + Files().value(0));
        const auto copy = bytes ? ReadRecoveryCopy(*bytes) : std::nullopt;
        return copy ? copy->project.documents[kStageImage].text : QString();
    }

  protected:
    // The next start, at which every question gets the answers in turn.
    void StartAgain(QList<Answer> answers) {
        App()->project.shaderModified = false;
        MakeWindow({});
        window->StartRecovery(Folder());
        asked.clear();
        window->Projects().dialogs.ask = [this, answers](const QString&, const QString& text) {
            asked.append(text.section(u' ', 0, 0));
            return answers.value(asked.size() - 1, Answer::Cancel);
        };
        restored = window->OfferRecovery();
    }
    QStringList asked;  // the names in the questions
    bool restored = false;
};

TEST_F(RecoveryTest, ACopyIsThereBeforeARunAndSoonAfterAChange) {
    Run(kCmdPlay);
    Run(kCmdPlay);
    EXPECT_TRUE(Files().isEmpty()) << "nothing is unsaved";
    ReplaceText(QStringLiteral("first"));
    App()->display.openGlOk = true;
    // The run's first look at its surface is the earliest moment at which a driver could end the process.
    class Surface : public test::ResizableSurface {
      public:
        explicit Surface(const RecoveryTest& fixture) : ResizableSurface({8, 8}), recovery(fixture) {}
        std::unique_ptr<GlContext> CreateContext() override {
            isKept = recovery.KeptText() == QStringLiteral("first") ? 1 : 0;
            return nullptr;
        }
        const RecoveryTest& recovery;
        std::atomic<int> isKept{-1};
    };
    const auto surface = std::make_shared<Surface>(*this);
    player.outputSurface = surface;
    Run(kCmdPlay);
    EXPECT_TRUE(PumpUntil([&] { return surface->isKept >= 0; }));
    EXPECT_EQ(surface->isKept, 1);
    ReplaceText(QStringLiteral(u"second \u4e2d"));
    EXPECT_TRUE(PumpUntil([&] { return KeptText() == QStringLiteral(u"second \u4e2d"); }));
    Run(kCmdStop);

    chosenPath = folder.filePath(QStringLiteral("saved.json"));
    Run(kCmdSaveProjectAs);
    EXPECT_TRUE(Files().isEmpty());
    ReplaceText(QStringLiteral("third"));
    window->SaveBeforeEnd();
    EXPECT_EQ(KeptText(), QStringLiteral("third"));
    answer = true;
    window->close();
    EXPECT_TRUE(Files("*").isEmpty()) << "lost by the user's wish";
}

TEST_F(RecoveryTest, TheNextStartsOfferWhatWasNotSaved) {
    // Two at once, of which the second dies last.
    ReplaceText(QStringLiteral("one"));
    SetOpenFileName(App()->project, QStringLiteral("/a/one.json"));
    window->SaveBeforeEnd();
    const QString one = Files().value(0);
    StartAgain({});
    EXPECT_EQ(asked, QStringList{QStringLiteral("one.json")});
    EXPECT_FALSE(restored);
    ReplaceText(QStringLiteral("two"));
    SetOpenFileName(App()->project, QStringLiteral("/a/two.json"));
    window->SaveBeforeEnd();
    ASSERT_TRUE(WriteWholeFile(Folder() + QStringLiteral("/bad.json"), "{"));

    StartAgain({Answer::Yes});
    EXPECT_EQ(asked, QStringList{QStringLiteral("two.json")});
    EXPECT_TRUE(restored);
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("two"));
    EXPECT_EQ(App()->project.fileName, QStringLiteral("/a/two.json"));
    EXPECT_TRUE(Title().startsWith(QStringLiteral("*two.json")));
    EXPECT_EQ(Files("*.bad").size(), 1);
    for (const char* word : {"bad.bad", "two.json is restored", "Another unsaved project"})
        EXPECT_TRUE(Status().contains(QLatin1String(word))) << Status().toStdString();
    EXPECT_EQ(Files().size(), 2) << "what is restored is still unsaved";

    // It dies again; "No" puts one aside for good.
    StartAgain({Answer::No, Answer::Yes});
    EXPECT_EQ(asked.size(), 2);
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("one"));
    EXPECT_EQ(Files("*.old").size(), 1);
    EXPECT_EQ(Files(), QStringList{one});
}

TEST_F(RecoveryTest, AFailureIsToldInThePane) {
    window->StartRecovery(QStringLiteral("/dev/null/x"));
    ReplaceText(QStringLiteral("text"));
    EXPECT_TRUE(PumpUntil([&] { return Status().contains(QLatin1String("/dev/null/x")); }));
}

}  // namespace
}  // namespace pixelgrove
