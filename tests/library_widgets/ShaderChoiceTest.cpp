#include "library/widgets/ShaderChoice.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "core/BaseFolders.h"
#include "library/ShaderService.h"
#include "platform/Files.h"
#include "support/DisplayTest.h"
#include "support/ScratchFolders.h"

namespace pixelgrove {
namespace {

template <typename W>
W& Part(FrameDialog& dialog, const char* name) {
    return *dialog.findChild<W*>(QString::fromLatin1(name));
}

class ShaderChoiceTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        for (const char* name : {"Alpha", "Beta wave", "Gamma", "Delta wave"})
            found_.shaders.push_back({QString::fromLatin1(name).left(4) + QStringLiteral("12"),
                                      QString::fromLatin1(name),
                                      "{}",
                                      {}});
        found_.shaders.push_back({{}, {}, "{}", {}});
    }
    // What is chosen by the gesture, which begins with the focus where the dialog puts it.
    std::optional<size_t> Choose(const std::function<void(FrameDialog&)>& gesture) {
        QTimer::singleShot(0, [&gesture] {
            auto* dialog = qobject_cast<FrameDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog && QTest::qWaitForWindowActive(dialog));
            gesture(*dialog);
        });
        return ChooseShader(nullptr, found_);
    }
    static void Type(FrameDialog& dialog, const char* text) {
        for (; *text; ++text)
            QTest::keyClick(dialog.windowHandle(), *text);
    }
    static void Press(FrameDialog& dialog, Qt::Key key) { QTest::keyClick(dialog.windowHandle(), key); }

    test::ScratchFolders folders_;
    FoundShaders found_{TextForm::Foreign, {}, 0};
};

TEST_F(ShaderChoiceTest, TypingFiltersAndEnterOrADoubleClickOpens) {
    EXPECT_EQ(Choose([](FrameDialog& d) { Press(d, Qt::Key_Return); }), 0u);
    EXPECT_EQ(Choose([](FrameDialog& d) {
                  Type(d, "WAVE");
                  Press(d, Qt::Key_Down);
                  Press(d, Qt::Key_Return);
              }),
              3u);
    EXPECT_EQ(Choose([](FrameDialog& d) {
                  Type(d, "gamm12");
                  Press(d, Qt::Key_Return);
              }),
              2u);
    EXPECT_EQ(Choose([](FrameDialog& d) {
                  auto& list = Part<QTreeView>(d, "shaderList");
                  const QPoint at = list.visualRect(list.model()->index(1, 0)).center();
                  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
                  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
              }),
              1u);
    EXPECT_EQ(Choose([](FrameDialog& d) { Press(d, Qt::Key_Escape); }), std::nullopt);
    EXPECT_EQ(Choose([](FrameDialog& d) {
                  Type(d, "nothing");
                  EXPECT_FALSE(Part<QPushButton>(d, "openButton").isEnabled());
                  Press(d, Qt::Key_Return);
                  Press(d, Qt::Key_Escape);
              }),
              std::nullopt);
}

TEST_F(ShaderChoiceTest, AllOfThemGoIntoTheLibrary) {
    MakeDataFolders();
    Choose([](FrameDialog& d) {
        Type(d, "alpha");  // what the filter hides goes too
        QTest::mouseClick(&Part<QPushButton>(d, "importButton"), Qt::LeftButton);
        EXPECT_TRUE(
            PumpUntil([&d] { return Part<QLabel>(d, "hint").text().contains(QStringLiteral("now")); }));
        EXPECT_EQ(Part<QLabel>(d, "hint").text().toStdString(),
                  "4 shaders are in the library now. Left out: one without a name, as it has no id.");
        Press(d, Qt::Key_Escape);
    });
    for (size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(IsPlainFile(ShaderItem({}, found_.shaders[i].id).path));
}

}  // namespace
}  // namespace pixelgrove
