// The row of stage tabs: where they stand, how they are painted, what their menus do.
#include "ui/StageButtons.h"

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
    QMenu* Menu(const char* name) const { return window->findChild<QMenu*>(QString::fromLatin1(name)); }
    // What stands in the row, from the left.
    QString Row() const {
        QStringList texts;
        int x = 0;
        for (uint32_t stage = 0; stage < kStageCount; ++stage) {
            const QPushButton* tab = Tabs().Button(stage);
            if (!tab->isVisible()) continue;
            EXPECT_EQ(tab->pos(), QPoint(x, 0)) << stage;
            EXPECT_LE(tab->geometry().right(), Tabs().width()) << stage;
            EXPECT_GT(tab->width(), tab->fontMetrics().horizontalAdvance(StageName(stage))) << stage;
            x += tab->width() + 2;
            texts.append(tab->text());
        }
        return texts.join(u'|');
    }
};

TEST_F(StageButtonsTest, ColoursTellTheCurrentStageAndErrors) {
    AddStage(kStageBufferA);
    App()->stageErrors[kStageBufferA] = QStringLiteral("wrong");
    window->RefreshStageTabs();
    EXPECT_EQ(GroundOf(kStageImage), 0xff80ff80u);
    EXPECT_EQ(GroundOf(kStageBufferA), 0xffb28080u);
    EXPECT_EQ(GroundOf(kStageNone), 0xff80b280u);
    SelectStage(kStageBufferA);
    EXPECT_EQ(GroundOf(kStageImage), 0xff80b280u);
    EXPECT_EQ(GroundOf(kStageBufferA), 0xffff8080u);

    // The caption is painted without the brackets of the text.
    QPushButton* tab = Tabs().Button(kStageImage);
    const QImage before = tab->grab().toImage();
    tab->setText(QStringLiteral("[ something else ]"));
    EXPECT_EQ(tab->grab().toImage(), before);
}

TEST_F(StageButtonsTest, AStageIsRemovedByItsContextMenuAlone) {
    AddStage(kStageCommon);
    SelectStage(kStageCommon);
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
    rightClick(kStageCommon);
    QMenu* menu = Menu("removeStageMenu");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(QApplication::activePopupWidget(), menu) << "and no menu of the form behind it";
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("Remove Buffer"));
    menu->actions()[0]->trigger();
    menu->close();
    EXPECT_EQ(App()->currentStage, uint32_t(kStageImage));
    EXPECT_EQ(Row(), QStringLiteral("+|[ Image ]"));
}

}  // namespace
}  // namespace pixelgrove
