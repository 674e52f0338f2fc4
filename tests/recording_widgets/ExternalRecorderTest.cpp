#include "recording/widgets/ExternalRecorder.h"

#include <xcb/xcb.h>

#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>

#include "recording/RecorderTable.h"
#include "recording/keyboard/KeyboardKeys.h"
#include "support/DisplayTest.h"

namespace pixelgrove {
namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

// Another client that has F7 and F8 as global hot keys, and two windows of the program.
class ExternalRecorderTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!App()) return;
        watcher = xcb_connect(nullptr, nullptr);
        const auto keyboard = ReadKeyboard(*watcher);
        ASSERT_TRUE(keyboard);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(watcher)).data->root;
        for (const uint32_t key : {118, 119}) {
            hotKeys[keyboard->keyCodes[key]] = char('7' + int(key) - 118);
            xcb_grab_key(watcher, 0, root, XCB_MOD_MASK_ANY, keyboard->keyCodes[key], XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC);
        }
        std::free(xcb_get_input_focus_reply(watcher, xcb_get_input_focus(watcher), nullptr));
        for (QWidget* window : {&output, &other}) {
            window->resize(200, 100);
            window->show();
            ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
        }
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        table.current = {u"Current"_s, u"F7"_s, u"F8"_s};
    }
    void TearDown() override {
        if (watcher) xcb_disconnect(watcher);
        DisplayTest::TearDown();
    }

    // Adds to `seen` what was pressed, and '!' where the output window wasn't the active one.
    void Look() {
        while (xcb_generic_event_t* event = xcb_poll_for_event(watcher)) {
            if ((event->response_type & 0x7F) == XCB_KEY_PRESS) {
                seen += hotKeys[reinterpret_cast<xcb_key_press_event_t*>(event)->detail];
                if (!output.isActiveWindow()) seen += '!';
                pressedAt.push_back(reinterpret_cast<xcb_key_press_event_t*>(event)->time);
            }
            std::free(event);
        }
    }
    bool WaitForSeen(const std::string& expected) {
        return PumpUntil([&] {
            Look();
            return seen == expected;
        });
    }

    xcb_connection_t* watcher = nullptr;
    std::map<uint8_t, char> hotKeys;  // by key code
    std::string seen;
    std::vector<uint32_t> pressedAt;
    QWidget output, other;
    RecorderTable table;
    QStringList said;
    ExternalRecorder recorder{table, [this](const QString& text) { said.append(text); }};
};

TEST_F(ExternalRecorderTest, StartAndStopTakeTurnsInTheOutputWindow) {
    recorder.Toggle(output, {});
    ASSERT_TRUE(WaitForSeen("7"));
    EXPECT_TRUE(recorder.IsOn());
    EXPECT_TRUE(PumpUntil([&] { return other.isActiveWindow(); })) << "has the focus back";
    // Two at once come one after the other.
    recorder.Toggle(output, {});
    recorder.Toggle(output, {});
    ASSERT_TRUE(WaitForSeen("787"));
    EXPECT_GE(pressedAt[2] - pressedAt[1], 200u);
    EXPECT_TRUE(PumpUntil([&] { return other.isActiveWindow(); }));
    EXPECT_EQ(said, QStringList({u"Pressed F7 to start recording."_s, u"Pressed F8 to stop recording."_s,
                                 u"Pressed F7 to start recording."_s}));
}

TEST_F(ExternalRecorderTest, ATimedRecordingStopsOnce) {
    recorder.Toggle(output, 0s);
    ASSERT_TRUE(WaitForSeen("78!")) << "the stop changes no window";
    EXPECT_GE(pressedAt[1] - pressedAt[0], 490u);
    EXPECT_LE(pressedAt[1] - pressedAt[0], 1500u);
    seen.clear();
    recorder.Toggle(output, 0s);
    recorder.Toggle(output, 10s);
    ASSERT_TRUE(WaitForSeen("78"));
    PumpFor(700);
    Look();
    EXPECT_EQ(seen, "78") << "nothing is left to stop";
}

TEST_F(ExternalRecorderTest, WhatCannotBePressedStillTakesItsTurn) {
    const std::pair<QString, QString> cases[] = {
        {u"Ctrl+Foo"_s, u"Couldn't press Ctrl+Foo to start recording: the keyboard lacks one of the keys."_s},
        {QString(), u"There is no key combination to start recording."_s}};
    for (const auto& [combo, text] : cases) {
        seen.clear();
        said.clear();
        table.current.start = combo;
        recorder.Toggle(output, {});
        recorder.Toggle(output, {});
        ASSERT_TRUE(WaitForSeen("8"));
        EXPECT_EQ(said.value(0), text);
    }
}

TEST_F(ExternalRecorderTest, EndsWithWhatItHasBegun) {
    auto own = std::make_unique<ExternalRecorder>(table, [](const QString&) {});
    own->Toggle(output, 0s);
    own.reset();
    PumpFor(200);
    Look();
    EXPECT_EQ(seen, "") << "gone before it pressed";
    auto pressing = std::make_unique<ExternalRecorder>(table, [](const QString&) {});
    pressing->Toggle(output, 0s);
    ASSERT_TRUE(WaitForSeen("7"));
    pressing.reset();
    xcb_query_keymap_reply_t* down = xcb_query_keymap_reply(watcher, xcb_query_keymap(watcher), nullptr);
    EXPECT_TRUE(std::ranges::all_of(down->keys, [](uint8_t byte) { return byte == 0; }));
    std::free(down);
}

}  // namespace
}  // namespace pixelgrove
