#include "ui/OutsideCommand.h"

#include <qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <cstring>

#include "commands/Commands.h"

namespace pixelgrove {

namespace {

constexpr char kMessageType[] = "PIXELGROVE_COMMAND";

xcb_atom_t MessageType() {
    static const xcb_atom_t type = [] {
        const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        if (!x11) return xcb_atom_t{XCB_ATOM_NONE};
        xcb_connection_t* connection = x11->connection();
        const auto asked = xcb_intern_atom(connection, 0, uint16_t(std::strlen(kMessageType)), kMessageType);
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection, asked, nullptr);
        const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return atom;
    }();
    return type;
}

}  // namespace

std::optional<int> OutsideCommandOf(const QByteArray& eventType, const void* message) {
    if (eventType != "xcb_generic_event_t" || !message) return std::nullopt;
    const auto* event = static_cast<const xcb_client_message_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE || event->format != 32) return std::nullopt;
    if (MessageType() == XCB_ATOM_NONE || event->type != MessageType()) return std::nullopt;
    return event->data.data32[0] == uint32_t(kCmdPaletteChanged) ? int(kCmdPaletteChanged) : 0;
}

}  // namespace pixelgrove
