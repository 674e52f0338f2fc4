#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <bit>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <set>

#include "platform/Clock.h"
#include "recording/keyboard/KeyPresser.h"
#include "recording/keyboard/KeyboardKeys.h"

namespace pixelgrove {
namespace {

using namespace Qt::StringLiterals;
using Keys = std::vector<uint32_t>;

KeyboardKeys KeysOfLayout(const char* layout, const char* variant = "", uint32_t group = 0) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref);
    const xkb_rule_names rules{"evdev", "pc105", layout, variant, nullptr};
    const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap(
        xkb_keymap_new_from_names(context.get(), &rules, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref);
    EXPECT_TRUE(keymap);
    return keymap ? KeysOf(*keymap, group) : KeyboardKeys();
}

TEST(KeyboardKeys, NamesFollowTheLayout) {
    const struct {
        const char* layout;
        const char* variant;
        uint32_t group;
        struct {
            QString name;
            int keyCode;  // 0 for a name that no key has
        } keys[9];
    } cases[] = {
        {"us",
         "",
         0,
         {{u"Y"_s, 29},
          {u"["_s, 34},
          {u"1"_s, 10},
          {u"Minus"_s, 20},
          {u"Less"_s, 94},
          {u"Plus"_s, 0},
          {u"/"_s, 61},
          {u"Windows"_s, 133},
          {u"F13"_s, 0}}},
        {"de",
         "",
         0,
         {{u"Y"_s, 52},
          {u"["_s, 0},
          {u"1"_s, 10},
          {u"Minus"_s, 61},
          {u"ß"_s, 20},
          {u"Plus"_s, 35},
          {u"Ü"_s, 34},
          {u"´"_s, 21},
          {u"AltGr"_s, 92}}},
        {"fr",
         "",
         0,
         {{u"A"_s, 24},
          {u"["_s, 0},
          {u"1"_s, 10},
          {u","_s, 58},
          {u"M"_s, 47},
          {u"*"_s, 51},
          {u"!"_s, 61},
          {u"Num1"_s, 87},
          {u"F9"_s, 75}}},
        {"us",
         "dvorak",
         0,
         {{u"S"_s, 47},
          {u"'"_s, 24},
          {u"/"_s, 34},
          {u"["_s, 20},
          {u"]"_s, 21},
          {u"="_s, 35},
          {u"Minus"_s, 48},
          {u"Period"_s, 26},
          {u"\\"_s, 51}}},
        {"ru",
         "",
         0,
         {{u"Q"_s, 24},
          {u"["_s, 34},
          {u"1"_s, 10},
          {u"Period"_s, 61},
          {u"Enter"_s, 36},
          {u"Ctrl"_s, 37},
          {u"Alt"_s, 64},
          {u"Shift"_s, 50},
          {u"PageUp"_s, 112}}},
        {"ru,us",
         ",",
         0,
         {{u"Q"_s, 24},
          {u"["_s, 34},
          {u";"_s, 47},
          {u"Period"_s, 60},
          {u"Insert"_s, 118},
          {u"Delete"_s, 119},
          {u"Esc"_s, 9},
          {u"Pause"_s, 127},
          {u"Space"_s, 65}}},
        {"us,de",
         ",",
         1,
         {{u"Y"_s, 52},
          {u"Z"_s, 29},
          {u"Ö"_s, 47},
          {u"Ä"_s, 48},
          {u"#"_s, 51},
          {u"^"_s, 49},
          {u","_s, 59},
          {u"Less"_s, 94},
          {u"NumMinus"_s, 82}}},
    };
    for (const auto& c : cases) {
        const KeyboardKeys keyboard = KeysOfLayout(c.layout, c.variant, c.group);
        for (const auto& [name, keyCode] : c.keys) {
            const auto keys = ParseKeyCombo(name, keyboard.names);
            EXPECT_EQ(keys ? keyboard.keyCodes.at(keys->front()) : 0, keyCode)
                << c.layout << " " << c.variant << " " << name.toStdString();
        }
    }
}

TEST(KeyboardKeys, EveryNameParsesBackAndIsItsOwnNormalForm) {
    for (const char* layout :
         {"us", "de", "fr", "gb", "es", "pl", "ru", "gr", "jp", "tr", "cz", "se", "ch", "us,ru"}) {
        const KeyboardKeys keyboard = KeysOfLayout(layout);
        int named = 0;
        std::set<int> codes;
        for (uint32_t i = 0; i < 256; ++i) {
            const KeyName& row = keyboard.names[i];
            ASSERT_EQ(row.name.isEmpty(), row.virtualKey == 0);
            ASSERT_EQ(row.name.isEmpty(), keyboard.keyCodes[i] == 0);
            if (row.name.isEmpty()) continue;
            ++named;
            const QString text = u"Ctrl+"_s + row.name;
            const auto keys = ParseKeyCombo(text, keyboard.names);
            EXPECT_EQ(keys, (Keys{kKeyCtrl, i})) << layout << " " << text.toStdString();
            EXPECT_EQ(NormaliseKeyCombo(text, keyboard.names), text) << layout;
            EXPECT_TRUE(codes.insert(keyboard.keyCodes[i]).second) << layout << " " << text.toStdString();
        }
        EXPECT_GE(named, 95) << layout;
        EXPECT_EQ(NormaliseKeyCombo(u"ctl-alt-o"_s, keyboard.names), u"Ctrl+Alt+O"_s) << layout;
    }
}

// Another client of the server, which sees what is pressed.
class KeyPresserTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!qApp) GTEST_SKIP() << "no X display: set DISPLAY to one";
        watcher = xcb_connect(nullptr, nullptr);
        root = xcb_setup_roots_iterator(xcb_get_setup(watcher)).data->root;
        const auto keyboard = ReadKeyboard(*watcher);
        ASSERT_TRUE(keyboard);
        keys = *keyboard;
    }
    void TearDown() override {
        if (watcher) xcb_disconnect(watcher);
    }

    struct Event {
        bool isPress;
        uint8_t keyCode;
        uint32_t time;
        uint16_t modifiers;
    };
    // Returns when the server has done what it was asked to.
    void Sync() const {
        std::free(xcb_get_input_focus_reply(watcher, xcb_get_input_focus(watcher), nullptr));
    }
    void GrabKeyboard() const {
        const auto asked =
            xcb_grab_keyboard(watcher, 0, root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_grab_keyboard_reply_t* reply = xcb_grab_keyboard_reply(watcher, asked, nullptr);
        ASSERT_TRUE(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
        std::free(reply);
    }
    std::vector<Event> Seen() const {
        Sync();
        std::vector<Event> events;
        while (xcb_generic_event_t* event = xcb_poll_for_event(watcher)) {
            const int type = event->response_type & 0x7F;
            const auto& key = *reinterpret_cast<xcb_key_press_event_t*>(event);
            if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)
                events.push_back({type == XCB_KEY_PRESS, key.detail, key.time, key.state});
            std::free(event);
        }
        return events;
    }
    int KeysDown() const {
        xcb_query_keymap_reply_t* reply = xcb_query_keymap_reply(watcher, xcb_query_keymap(watcher), nullptr);
        int down = 0;
        for (const uint8_t byte : reply->keys)
            down += std::popcount(byte);
        std::free(reply);
        return down;
    }
    uint8_t CodeOf(uint32_t key) const { return keys.keyCodes[key]; }
    bool PressAndWait(KeyPresser& presser, const Keys& virtualKeys) const {
        bool released = false;
        QString reason;
        if (!presser.Press(
                virtualKeys, [&] { released = true; }, reason))
            return false;
        while (!released)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return true;
    }

    xcb_connection_t* watcher = nullptr;
    xcb_window_t root = XCB_NONE;
    KeyboardKeys keys;
};

TEST_F(KeyPresserTest, PressesAndReleasesInTheOrderOfTheText) {
    GrabKeyboard();
    KeyPresser presser;
    for (const Keys& combo : {Keys{kKeyCtrl, kKeyAlt, 'O'}, Keys{120}, Keys{'Q', kKeyShift, 0, 0}}) {
        Seen();
        ASSERT_TRUE(PressAndWait(presser, combo));
        const std::vector<Event> events = Seen();
        std::vector<std::pair<bool, int>> order, expected;
        for (const bool isPress : {true, false})
            for (const uint32_t key : combo)
                if (key != 0) expected.emplace_back(isPress, CodeOf(key));
        for (const Event& event : events)
            order.emplace_back(event.isPress, event.keyCode);
        ASSERT_EQ(order, expected);
        const size_t half = events.size() / 2;
        EXPECT_LE(events[half - 1].time - events[0].time, 20u);
        EXPECT_GE(events[half].time - events[half - 1].time, 99u);
        EXPECT_EQ(KeysDown(), 0);
        RecordProperty("held", int(events[half].time - events[half - 1].time));
    }
}

TEST_F(KeyPresserTest, AGlobalHotKeySeesItsModifiers) {
    xcb_grab_key(watcher, 0, root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, CodeOf('O'), XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    Sync();
    KeyPresser presser;
    ASSERT_TRUE(PressAndWait(presser, {kKeyCtrl, kKeyAlt, 'P'}));
    EXPECT_TRUE(Seen().empty());
    ASSERT_TRUE(PressAndWait(presser, {kKeyCtrl, kKeyAlt, 'O'}));
    const std::vector<Event> events = Seen();
    ASSERT_FALSE(events.empty());
    EXPECT_TRUE(events[0].isPress);
    EXPECT_EQ(events[0].keyCode, CodeOf('O'));
    EXPECT_EQ(events[0].modifiers, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
}

TEST_F(KeyPresserTest, RefusesWhatItCannotPress) {
    GrabKeyboard();
    KeyPresser presser;
    QString reason;
    bool released = false;
    EXPECT_FALSE(presser.Press(
        {kKeyCtrl, 124}, [] {}, reason))
        << "F13";
    EXPECT_EQ(reason, u"the keyboard lacks one of the keys"_s);
    EXPECT_TRUE(presser.Press(
        {'A'}, [&] { released = true; }, reason));
    EXPECT_FALSE(presser.Press(
        {'B'}, [] {}, reason))
        << "while A is down";
    while (!released)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(Seen().size(), 2u);
}

TEST_F(KeyPresserTest, NoKeyStaysDown) {
    GrabKeyboard();
    QString reason;
    {
        KeyPresser presser;
        ASSERT_TRUE(presser.Press(
            {kKeyCtrl, 'A'}, [] { FAIL() << "gone by then"; }, reason));
        Sync();
        EXPECT_EQ(KeysDown(), 2);
    }
    EXPECT_EQ(KeysDown(), 0) << "its end waits for them";

    // A process that is killed meanwhile.
    const pid_t child = fork();
    if (child == 0) {
        KeyPresser presser;
        presser.Press(
            {kKeyCtrl, 'A'}, [] {}, reason);
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(KeysDown(), 2);
    QElapsedTimer timer;
    timer.start();
    while (KeysDown() != 0 && timer.elapsed() < 10000)
        SleepMs(5);
    EXPECT_EQ(KeysDown(), 0);
    EXPECT_EQ(Seen().size(), 8u);
}

// The layout of the server, which the user may change at any time.
TEST_F(KeyPresserTest, TakesTheKeysWhereTheLayoutHasThem) {
    const auto setLayout = [](const QString& layout) {
        return QProcess::execute(u"setxkbmap"_s, {u"-layout"_s, layout}) == 0;
    };
    if (!setLayout(u"us"_s)) GTEST_SKIP() << "no setxkbmap";
    GrabKeyboard();
    KeyPresser presser;
    const std::pair<const char16_t*, int> cases[] = {{u"us", 29}, {u"de", 52}, {u"fr", 29}};
    for (const auto& [layout, keyCode] : cases) {
        ASSERT_TRUE(setLayout(QString::fromUtf16(layout)));
        Seen();
        ASSERT_TRUE(PressAndWait(presser, {'Y'}));
        const std::vector<Event> events = Seen();
        ASSERT_EQ(events.size(), 2u);
        EXPECT_EQ(events[0].keyCode, keyCode);
    }
    ASSERT_TRUE(setLayout(u"us"_s));
}

}  // namespace
}  // namespace pixelgrove
