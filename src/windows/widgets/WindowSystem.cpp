#include "windows/widgets/WindowSystem.h"

#include <qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace pixelgrove {

namespace {

constexpr xcb_keysym_t kShiftLeft = 0xffe1;

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using ReplyOf = std::unique_ptr<Reply, Freed>;

// Null on other platforms and without a connection that works.
xcb_connection_t* Connection() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    return connection && xcb_connection_has_error(connection) == 0 ? connection : nullptr;
}

// XCB_ATOM_NONE when no program has ever used the name.
xcb_atom_t ExistingAtom(xcb_connection_t* connection, std::string_view name) {
    const ReplyOf<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, uint16_t(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// The window that a property names; XCB_WINDOW_NONE also when the property's own window is gone.
xcb_window_t NamedWindow(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
    const ReplyOf<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, window, property, XCB_ATOM_WINDOW, 0, 1), nullptr));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4)
        return XCB_WINDOW_NONE;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

}  // namespace

bool HasWindowManager() {
    xcb_connection_t* connection = Connection();
    if (!connection) return true;
    const xcb_atom_t check = ExistingAtom(connection, "_NET_SUPPORTING_WM_CHECK");
    if (check == XCB_ATOM_NONE) return false;
    // A manager that has died leaves the root's property behind. Its own window has gone with it, and a
    // window that got the same id since doesn't name itself.
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        const xcb_window_t named = NamedWindow(connection, screen.data->root, check);
        if (named != XCB_WINDOW_NONE && NamedWindow(connection, named, check) == named) return true;
    }
    return false;
}

bool IsLeftShiftDown() {
    xcb_connection_t* connection = Connection();
    if (!connection) return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ShiftModifier);
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const xcb_keycode_t first = setup->min_keycode;
    // Both questions are sent before the first answer is waited for.
    const auto mappingAsked =
        xcb_get_keyboard_mapping(connection, first, uint8_t(setup->max_keycode - first + 1));
    const auto keysAsked = xcb_query_keymap(connection);
    const ReplyOf<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(connection, mappingAsked, nullptr));
    const ReplyOf<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(connection, keysAsked, nullptr));
    if (!mapping || !keys || mapping->keysyms_per_keycode == 0) return false;

    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    const int count = xcb_get_keyboard_mapping_keysyms_length(mapping.get());
    for (int i = 0; i < count; ++i) {
        if (symbols[i] != kShiftLeft) continue;
        const int code = first + i / mapping->keysyms_per_keycode;
        if (code < 256 && (keys->keys[code / 8] >> (code % 8) & 1)) return true;
    }
    return false;
}

}  // namespace pixelgrove
