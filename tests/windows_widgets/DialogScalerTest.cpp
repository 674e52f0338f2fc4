#include "windows/widgets/DialogScaler.h"

#include <QPushButton>
#include <QTreeWidget>
#include <memory>

#include "look/widgets/Theme.h"
#include "support/DisplayTest.h"

namespace pixelgrove {
namespace {

// 395 by 195 pixels, so 400 by 200 as the base of the scale.
class DialogScalerTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (IsSkipped()) return;
        form = std::make_unique<QWidget>();
        form->setFont(FormFont());
        form->resize(395, 195);
        button = Add<QPushButton>({10, 20, 80, 24});
        tree = Add<QTreeWidget>({10, 60, 200, 100});
    }
    void TearDown() override {
        form.reset();
        DisplayTest::TearDown();
    }

    template <typename T>
    T* Add(const QRect& rect) {
        auto* widget = new T(form.get());
        widget->setGeometry(rect);
        return widget;
    }

    std::unique_ptr<QWidget> form;
    QPushButton* button = nullptr;
    QTreeWidget* tree = nullptr;
};

TEST_F(DialogScalerTest, ControlsAndFontsFollowTheForm) {
    const int treePixels = tree->fontInfo().pixelSize();
    button->setFixedSize(button->size());  // limits must not hold it back
    AttachScaling(*form);
    form->show();
    QCoreApplication::sendPostedEvents();
    const struct {
        QSize size;
        QRect button, tree;
        int fontPixels;
        int stretch;
    } cases[] = {
        {{600, 300}, {15, 30, 120, 36}, {15, 90, 300, 150}, 18, 100},
        {{200, 100}, {5, 10, 40, 12}, {5, 30, 100, 50}, 6, 100},
        {{800, 200}, {20, 20, 160, 24}, {20, 60, 400, 100}, 12, 100},  // wider: the font stays
        {{400, 250}, {10, 25, 80, 30}, {10, 75, 200, 125}, 15, 80},    // higher: narrower letters
        {{200, 800}, {5, 80, 40, 96}, {5, 240, 100, 400}, 48, 50},     // never below half
        {{0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, 1, 100},
        {{600, 300}, {15, 30, 120, 36}, {15, 90, 300, 150}, 18, 100},  // nothing adds up
    };
    for (const auto& step : cases) {
        SCOPED_TRACE(step.size.width());
        form->resize(step.size);
        EXPECT_EQ(button->geometry(), step.button);
        EXPECT_EQ(tree->geometry(), step.tree);
        EXPECT_EQ(button->font().pixelSize(), step.fontPixels);
        EXPECT_EQ(button->font().stretch(), step.stretch);
        EXPECT_EQ(tree->fontInfo().pixelSize(), treePixels);
        EXPECT_TRUE(form->updatesEnabled());
    }
}

TEST_F(DialogScalerTest, LateControlsJoinAtThePlaceWhereTheyAreFirstShown) {
    for (bool mainWindow : {false, true}) {
        SCOPED_TRACE(mainWindow);
        auto owner = std::make_unique<QWidget>();
        owner->setFont(FormFont());
        owner->resize(395, 195);
        AttachScaling(*owner, mainWindow);
        owner->show();
        owner->resize(800, 400);
        auto* first = new QPushButton(owner.get());
        auto* second = new QPushButton(owner.get());
        first->setGeometry(100, 40, 60, 24);
        first->show();  // the second one has no place yet
        second->setGeometry(200, 40, 60, 24);
        second->show();
        const int factor = mainWindow ? 2 : 1;
        EXPECT_EQ(first->geometry(), QRect(100 * factor, 40 * factor, 60 * factor, 24 * factor));
        EXPECT_EQ(second->geometry(), QRect(200 * factor, 40 * factor, 60 * factor, 24 * factor));
        EXPECT_EQ(first->font().pixelSize(), 24);
        delete first;
        owner->resize(1600, 800);
        EXPECT_EQ(second->geometry(), QRect(400 * factor, 80 * factor, 120 * factor, 48 * factor));
    }
}

}  // namespace
}  // namespace pixelgrove
