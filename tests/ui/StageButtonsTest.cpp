// The row of stage tabs: how they are painted, what their menus do.
#include "ui/channels/StageButtons.h"

#include <QContextMenuEvent>
#include <QMenu>

#include "WindowFixture.h"

namespace pixelgrove {
namespace {

class StageButtonsTest : public WindowTest {
  protected:
    StageButtons& Tabs() const { return *Control<StageButtons>("stageButtons"); }
    QRgb GroundOf(uint32_t stage) const {
        return Tabs().Button(stage)->grab().toImage().pixel(3, Tabs().height() / 2);
    }
};

TEST_F(StageButtonsTest, ColoursTellTheCurrentStageAndErrors) {
    AddStage(App()->project, kStageBufferA);
    App()->project.stageErrors[kStageBufferA] = {{}};
    window->RefreshStageTabs();
    EXPECT_EQ(GroundOf(kStageImage), 0xff80ff80u);
    EXPECT_EQ(GroundOf(kStageBufferA), 0xffb28080u);
    EXPECT_EQ(GroundOf(kStageNone), 0xff80b280u);
    SelectStage(App()->project, kStageBufferA);
    EXPECT_EQ(GroundOf(kStageImage), 0xff80b280u);
    EXPECT_EQ(GroundOf(kStageBufferA), 0xffff8080u);

    // The caption is painted without the brackets of the text.
    QPushButton* tab = Tabs().Button(kStageImage);
    const QImage before = tab->grab().toImage();
    tab->setText(QStringLiteral("[ something else ]"));
    EXPECT_EQ(tab->grab().toImage(), before);
}

TEST_F(StageButtonsTest, AStageIsRemovedByItsContextMenuAlone) {
    AddStage(App()->project, kStageBufferC);
    SelectStage(App()->project, kStageBufferC);
    App()->project.channels[kStageBufferC][2].kind = kChannelTexture;
    const auto rightClick = [this](uint32_t stage) {
        QPushButton* tab = Tabs().Button(stage);
        const QPoint at = tab->rect().center();
        QTest::mouseClick(tab, Qt::RightButton);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, tab->mapToGlobal(at));
        QCoreApplication::sendEvent(tab, &event);
    };
    for (const uint32_t stage : {kStageNone, kStageImage}) {
        rightClick(stage);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << stage;
    }
    rightClick(kStageBufferC);
    auto* menu = window->findChild<QMenu*>(QStringLiteral("removeStageMenu"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(QApplication::activePopupWidget(), menu) << "and no menu of the form behind it";
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("Remove Buffer"));
    menu->actions()[0]->trigger();
    menu->close();
    EXPECT_EQ(App()->project.currentStage, uint32_t(kStageImage));
    EXPECT_FALSE(Tabs().Button(kStageBufferC)->isVisible());
    EXPECT_FALSE(App()->project.documents[kStageBufferC].hasText);
    EXPECT_EQ(App()->project.channels[kStageBufferC][2].kind, uint32_t(kChannelUnused));
}

}  // namespace
}  // namespace pixelgrove
