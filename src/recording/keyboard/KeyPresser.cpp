#include "recording/keyboard/KeyPresser.h"

#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/Programs.h"
#include "recording/keyboard/KeyboardKeys.h"

namespace pixelgrove {

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

// The server drops what it has yet to do for a connection that ends with its process. A child that has the
// connection open as well keeps it until the release is over.
void KeepOpenBeyondProcess(xcb_connection_t& connection) {
    const int copy = dup(xcb_get_file_descriptor(&connection));  // which, unlike it, children get
    if (copy < 0) return;
    StartProgram(QStringLiteral("sleep"), {QStringLiteral("1")});
    close(copy);
}

std::vector<uint8_t> KeyCodesOf(const std::vector<uint32_t>& virtualKeys, const KeyboardKeys& keyboard) {
    std::vector<uint8_t> codes;
    for (const uint32_t key : virtualKeys)
        if (key != 0) codes.push_back(key < keyboard.keyCodes.size() ? keyboard.keyCodes[key] : uint8_t(0));
    return codes;
}

}  // namespace

struct KeyPresser::Keys {
    Connection connection;
    xcb_get_input_focus_cookie_t last{};  // answered once all before it is done
    std::optional<QSocketNotifier> answered;
    std::function<void()> released;
};

KeyPresser::KeyPresser() = default;

KeyPresser::~KeyPresser() {
    if (keys_) std::free(xcb_get_input_focus_reply(keys_->connection.get(), keys_->last, nullptr));
}

bool KeyPresser::Press(const std::vector<uint32_t>& virtualKeys, std::function<void()> released,
                       QString& reason) {
    if (keys_) {
        reason = QStringLiteral("other keys are down");
        return false;
    }
    Connection connection(xcb_connect(nullptr, nullptr));
    xcb_connection_t* const x = connection.get();
    const xcb_query_extension_reply_t* xtest =
        xcb_connection_has_error(x) == 0 ? xcb_get_extension_data(x, &xcb_test_id) : nullptr;
    const std::optional<KeyboardKeys> keyboard = xtest && xtest->present ? ReadKeyboard(*x) : std::nullopt;
    if (!keyboard) {
        reason = QStringLiteral("the X server presses no keys for programs");
        return false;
    }
    const std::vector<uint8_t> codes = KeyCodesOf(virtualKeys, *keyboard);
    if (std::ranges::find(codes, uint8_t(0)) != codes.end()) {
        reason = QStringLiteral("the keyboard lacks one of the keys");
        return false;
    }
    KeepOpenBeyondProcess(*x);
    for (const uint8_t code : codes)
        xcb_test_fake_input(x, XCB_KEY_PRESS, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    // The server waits that long before the first release.
    uint32_t delayMs = uint32_t(kKeyPressTime.count());
    for (const uint8_t code : codes)
        xcb_test_fake_input(x, XCB_KEY_RELEASE, code, std::exchange(delayMs, 0), XCB_NONE, 0, 0, 0);
    keys_ = std::make_unique<Keys>();
    keys_->last = xcb_get_input_focus(x);
    keys_->released = std::move(released);
    keys_->connection = std::move(connection);
    xcb_flush(x);
    keys_->answered.emplace(xcb_get_file_descriptor(x), QSocketNotifier::Read);
    QObject::connect(&*keys_->answered, &QSocketNotifier::activated, [this] { Finish(); });
    return true;
}

void KeyPresser::Finish() {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    const bool isAnswered =
        xcb_poll_for_reply(keys_->connection.get(), keys_->last.sequence, &reply, &error) != 0;
    std::free(reply);
    std::free(error);
    // One that is broken counts as answered.
    if (!isAnswered) return;
    keys_->answered->setEnabled(false);
    // Not from within the notifier's own signal.
    QMetaObject::invokeMethod(
        &later_,
        [this] {
            const std::unique_ptr<Keys> done = std::move(keys_);
            done->released();
        },
        Qt::QueuedConnection);
}

}  // namespace pixelgrove
