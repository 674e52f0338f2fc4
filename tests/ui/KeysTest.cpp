// The main window by its keys alone, and where the focus is.
#include <QKeyEvent>

#include "WindowFixture.h"
#include "look/widgets/Theme.h"
#include "ui/FpsField.h"

namespace pixelgrove {
namespace {

class KeysTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (!App()) return;
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    QString Focus() const { return QApplication::focusWidget()->objectName(); }
};

TEST_F(KeysTest, EachKeyLeadsToItsPlace) {
    for (const uint32_t stage : {kStageCommon, kStageBufferB})
        AddStage(App()->project, stage);
    const auto stage = [] { return StageName(App()->project.currentStage); };
    const auto zoom = [this] { return QString::number(Editor()->ZoomPercent()); };
    const auto focus = [this] { return Focus(); };
    const auto text = [this] { return Editor()->toPlainText(); };
    ReplaceText(QStringLiteral("a"));
    const Qt::KeyboardModifiers none, ctrl = Qt::ControlModifier, shift = Qt::ShiftModifier;
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        std::function<QString()> seen;
        const char* expected;
    } rows[] = {
        {Qt::Key_F6, none, focus, "statusText"},
        {Qt::Key_F6, none, focus, "treeView"},
        {Qt::Key_F6, none, focus, "stageImageButton"},
        {Qt::Key_F6, none, focus, "channelButton0"},
        {Qt::Key_F6, none, focus, App()->display.openGlOk ? "playButton" : "randomizeCheck"},
        {Qt::Key_F6, none, focus, "editor"},
        {Qt::Key_Tab, ctrl, stage, "Common"},  // behind the last
        {Qt::Key_F6, shift, focus, App()->display.openGlOk ? "playButton" : "randomizeCheck"},
        {Qt::Key_F6, shift, focus, "stageCommonButton"},  // it has no channels
        {Qt::Key_Tab, ctrl, stage, "Buffer B"},
        {Qt::Key_Tab, ctrl, stage, "Image"},
        {Qt::Key_Backtab, ctrl | shift, stage, "Buffer B"},
        {Qt::Key_Tab, ctrl, focus, "stageCommonButton"},
        {Qt::Key_F6, shift, focus, "treeView"},
        {Qt::Key_F6, shift, focus, "statusText"},
        {Qt::Key_Plus, ctrl, zoom, "110"},
        {Qt::Key_F6, shift, focus, "editor"},
        {Qt::Key_Equal, ctrl, zoom, "120"},
        {Qt::Key_Minus, ctrl, zoom, "110"},
        {Qt::Key_0, ctrl, zoom, "100"},
        {Qt::Key_B, none, text, "ab"},
        {Qt::Key_Z, ctrl, text, "a"},
        {Qt::Key_Y, ctrl, text, "ab"},
        {Qt::Key_Z, ctrl, text, "a"},
        {Qt::Key_Z, ctrl | shift, text, "ab"},
        {Qt::Key_F6, none, focus, "statusText"},
        {Qt::Key_Z, ctrl, text, "ab"},  // the editing keys act where the focus is
    };
    int at = 0;
    for (const auto& row : rows) {
        QTest::keyClick(QApplication::focusWidget(), row.key, row.modifiers);
        EXPECT_EQ(row.seen().toStdString(), row.expected) << "row " << at;
        ++at;
    }
}

TEST_F(KeysTest, AltIsNoWayToTypeALetter) {
    const struct {
        Qt::KeyboardModifiers modifiers;
        const char* typed;
    } rows[] = {{Qt::AltModifier, ""},
                {Qt::AltModifier | Qt::ShiftModifier, ""},
                {Qt::AltModifier | Qt::ControlModifier, ""},
                {Qt::GroupSwitchModifier, "@"},
                {Qt::ShiftModifier, "@"}};
    for (const char* name : {"editor", "fpsTarget"}) {
        for (const auto& row : rows) {
            ReplaceText(QString());
            Control<FpsField>("fpsTarget")->clear();
            QKeyEvent event(QEvent::KeyPress, Qt::Key_At, row.modifiers, QStringLiteral("@"));
            QCoreApplication::sendEvent(Control<QWidget>(name), &event);
            EXPECT_EQ(Editor()->toPlainText() + Text("fpsTarget"), QString::fromLatin1(row.typed))
                << name << ' ' << int(row.modifiers);
        }
    }
}

// As many pixels as its border is wide and high turn light or dark.
TEST_F(KeysTest, EveryControlShowsThatItHasTheFocus) {
    AddStage(App()->project, kStageBufferA);
    for (ChannelInput& channel : App()->project.channels[kStageImage])
        channel.kind = kChannelKeyboard;
    window->RefreshChannelPanel();
    int controls = 0;
    for (auto* control : window->Client()->findChildren<QWidget*>()) {
        if (!control->isVisible() || !control->isEnabled() || !(control->focusPolicy() & Qt::TabFocus))
            continue;
        const auto picture = [control](QWidget* focused) {
            focused->setFocus(Qt::TabFocusReason);
            return control->grab().toImage();
        };
        const QImage without = picture(control == Editor() ? Control<QWidget>("playButton") : Editor());
        const QImage with = picture(control);
        int marked = 0;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                marked += Contrast(with.pixelColor(x, y), without.pixelColor(x, y)) >= 3;
        EXPECT_GE(marked, control->width() + control->height())
            << control->objectName().toStdString() << " of " << control->width() << 'x' << control->height();
        ++controls;
    }
    EXPECT_GT(controls, 20);
}

}  // namespace
}  // namespace pixelgrove
