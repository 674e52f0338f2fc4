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
#include <set>

#include "platform/Clock.h"
#include "platform/Owned.h"
#include "recording/keyboard/KeyPresser.h"
#include "recording/keyboard/KeyboardKeys.h"

namespace pixelgrove {
namespace {

using namespace Qt::StringLiterals;
using Keys = std::vector<uint32_t>;

KeyboardKeys KeysOfLayout(const char* layout, const char* variant = "", uint32_t group = 0) {
    const Owned<xkb_context, xkb_context_unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names rules{"evdev", "pc105", layout, variant, nullptr};
    const Owned<xkb_keymap, xkb_keymap_unref> keymap(
        xkb_keymap_new_from_names(context.get(), &rules, XKB_KEYMAP_COMPILE_NO_FLAGS));
    EXPECT_TRUE(keymap);
    return keymap ? KeysOf(*keymap, group) : KeyboardKeys();
}

TEST(KeyboardKeys, NamesFollowTheLayout) {
    const struct {
        const char *layout, *variant;
        uint32_t group;
        QString keys;  // names, each with its key code behind; 0 for a name that no key has
    } cases[] = {
        {"us", "", 0, u"Y 29 [ 34 1 10 Minus 20 Less 94 Plus 0 / 61 Windows 133 F13 0"_s},
        {"de", "", 0, u"Y 52 [ 0 1 10 Minus 61 ß 20 Plus 35 Ü 34 ´ 21 AltGr 92"_s},
        {"fr", "", 0, u"A 24 [ 0 1 10 , 58 M 47 * 51 ! 61 Num1 87 F9 75"_s},
        {"us", "dvorak", 0, u"S 47 ' 24 / 34 [ 20 ] 21 = 35 Minus 48 Period 26 \\ 51"_s},
        {"ru", "", 0, u"Q 24 [ 34 1 10 Period 61 Enter 36 Ctrl 37 Alt 64 Shift 50 PageUp 112"_s},
        {"ru,us", ",", 0, u"Q 24 [ 34 ; 47 Period 60 Insert 118 Delete 119 Esc 9 Pause 127 Space 65"_s},
        {"us,de", ",", 1, u"Y 52 Z 29 Ö 47 Ä 48 # 51 ^ 49 , 59 Less 94 NumMinus 82"_s},
    };
    for (const auto& c : cases) {
        const KeyboardKeys keyboard = KeysOfLayout(c.layout, c.variant, c.group);
        const QStringList words = c.keys.split(u' ');
        for (qsizetype i = 0; i < words.size(); i += 2) {
            const auto keys = ParseKeyCombo(words[i], keyboard.names);
            EXPECT_EQ(keys ? keyboard.keyCodes.at(keys->front()) : 0, words[i + 1].toInt())
                << c.layout << " " << c.variant << " " << words[i].toStdString();
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
    // Counts the release in `released`.
    bool Press(KeyPresser& presser, const Keys& virtualKeys) {
        const auto onRelease = [this] { ++released; };
        return presser.Press(virtualKeys, onRelease, reason);
    }
    void WaitForRelease() const {
        for (const int before = released; released == before;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    bool PressAndWait(KeyPresser& presser, const Keys& virtualKeys) {
        if (!Press(presser, virtualKeys)) return false;
        WaitForRelease();
        return true;
    }

    xcb_connection_t* watcher = nullptr;
    xcb_window_t root = XCB_NONE;
    KeyboardKeys keys;
    int released = 0;
    QString reason;  // why the last press was refused
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
    EXPECT_FALSE(Press(presser, {kKeyCtrl, 124})) << "F13";
    EXPECT_EQ(reason, u"the keyboard lacks one of the keys"_s);
    EXPECT_TRUE(Press(presser, {'A'}));
    EXPECT_FALSE(Press(presser, {'B'})) << "while A is down";
    WaitForRelease();
    EXPECT_EQ(Seen().size(), 2u);
    EXPECT_EQ(released, 1);
}

TEST_F(KeyPresserTest, NoKeyStaysDown) {
    GrabKeyboard();
    {
        KeyPresser presser;
        ASSERT_TRUE(Press(presser, {kKeyCtrl, 'A'}));
        Sync();
        EXPECT_EQ(KeysDown(), 2);
    }
    EXPECT_EQ(KeysDown(), 0) << "its end waits for them";
    QCoreApplication::processEvents();
    EXPECT_EQ(released, 0) << "and tells nobody";

    // A process that is killed meanwhile.
    const pid_t child = fork();
    if (child == 0) {
        KeyPresser presser;
        Press(presser, {kKeyCtrl, 'A'});
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
