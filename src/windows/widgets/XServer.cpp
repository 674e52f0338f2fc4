#include "windows/widgets/XServer.h"

#include <qguiapplication_platform.h>

#include <QGuiApplication>
#include <algorithm>

#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {
constexpr uint32_t kMostWords = 4096;
}

xcb_connection_t* XConnection() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    return connection && xcb_connection_has_error(connection) == 0 ? connection : nullptr;
}

xcb_window_t RootWindow() {
    xcb_connection_t* connection = XConnection();
    if (!connection) return XCB_WINDOW_NONE;
    const auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    return screen.rem > 0 ? screen.data->root : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_atom_t ExistingAtom(std::string_view name) {
    xcb_connection_t* connection = XConnection();
    if (!connection) return XCB_ATOM_NONE;
    const ReplyOf<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, uint16_t(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<uint32_t> ReadWords(xcb_window_t window, xcb_atom_t property) {
    xcb_connection_t* connection = XConnection();
    if (!connection || window == XCB_WINDOW_NONE || property == XCB_ATOM_NONE) return {};
    const ReplyOf<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, window, property, XCB_ATOM_ANY, 0, kMostWords), nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* words = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
    return {words, words + xcb_get_property_value_length(reply.get()) / 4};
}

bool ManagerSupports(std::initializer_list<std::string_view> names) {
    if (!XConnection() || !HasWindowManager()) return false;
    const std::vector<uint32_t> supported = ReadWords(RootWindow(), ExistingAtom("_NET_SUPPORTED"));
    return std::ranges::all_of(names, [&supported](std::string_view name) {
        const xcb_atom_t atom = ExistingAtom(name);
        return atom != XCB_ATOM_NONE && std::ranges::find(supported, atom) != supported.end();
    });
}

void AskManager(xcb_window_t window, std::string_view message, const std::array<uint32_t, 5>& words) {
    xcb_connection_t* connection = XConnection();
    const xcb_atom_t type = ExistingAtom(message);
    if (!connection || type == XCB_ATOM_NONE) return;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::ranges::copy(words, event.data.data32);
    constexpr uint32_t kToManagers =
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(connection, 0, RootWindow(), kToManagers, reinterpret_cast<const char*>(&event));
    xcb_flush(connection);
}

}  // namespace pixelgrove
