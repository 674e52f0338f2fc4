#include "windows/widgets/WindowSystem.h"

#include <qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QInputDevice>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

namespace pixelgrove {

namespace {

constexpr xcb_keysym_t kShiftLeft = 0xffe1;

// More than any window manager says that it supports.
constexpr uint32_t kMaxSupported = 4096;

// The words of _NET_WM_MOVERESIZE for what is to be done.
enum MoveResize : uint32_t {
    kSizeTopLeft,
    kSizeTop,
    kSizeTopRight,
    kSizeRight,
    kSizeBottomRight,
    kSizeBottom,
    kSizeBottomLeft,
    kSizeLeft,
    kMove,
    kCancel = 11
};

MoveResize MoveResizeOf(Qt::Edges edges) {
    const bool left = edges & Qt::LeftEdge, right = edges & Qt::RightEdge;
    if (edges & Qt::TopEdge) return left ? kSizeTopLeft : right ? kSizeTopRight : kSizeTop;
    if (edges & Qt::BottomEdge) return left ? kSizeBottomLeft : right ? kSizeBottomRight : kSizeBottom;
    return left ? kSizeLeft : right ? kSizeRight : kMove;
}

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

// An event of 32 bytes, as all of them are on the wire.
template <typename Event>
void SendEvent(xcb_connection_t* connection, xcb_window_t window, uint32_t mask, const Event& event) {
    char bytes[32] = {};
    static_assert(sizeof event <= sizeof bytes);
    std::memcpy(bytes, &event, sizeof event);
    xcb_send_event(connection, 0, window, mask, bytes);
    xcb_flush(connection);
}

// The root window that a running window manager has marked; XCB_WINDOW_NONE without one. A manager that has
// died leaves the mark behind. Its own window has gone with it, and a window that got the same id since
// doesn't name itself.
xcb_window_t ManagedRoot(xcb_connection_t* connection) {
    const xcb_atom_t check = ExistingAtom(connection, "_NET_SUPPORTING_WM_CHECK");
    if (check == XCB_ATOM_NONE) return XCB_WINDOW_NONE;
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0; xcb_screen_next(&screen)) {
        const xcb_window_t named = NamedWindow(connection, screen.data->root, check);
        if (named != XCB_WINDOW_NONE && NamedWindow(connection, named, check) == named)
            return screen.data->root;
    }
    return XCB_WINDOW_NONE;
}

// To the window manager; false without one.
bool SendMoveResize(xcb_connection_t* connection, const QWidget& window, MoveResize what,
                    const QPoint& from) {
    const xcb_window_t root = ManagedRoot(connection);
    if (root == XCB_WINDOW_NONE) return false;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window.winId());
    message.type = ExistingAtom(connection, "_NET_WM_MOVERESIZE");
    message.data.data32[0] = uint32_t(from.x());
    message.data.data32[1] = uint32_t(from.y());
    message.data.data32[2] = what;
    message.data.data32[3] = XCB_BUTTON_INDEX_1;
    message.data.data32[4] = 1;  // asked by a program
    SendEvent(connection, root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
              message);
    return true;
}

class ReportFilter : public QObject, public QAbstractNativeEventFilter {
  public:
    explicit ReportFilter(std::function<void(QWidget&)> told) : QObject(qApp), told_(std::move(told)) {}

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) override {
        if (eventType != "xcb_generic_event_t") return false;
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7f) != XCB_CONFIGURE_NOTIFY) return false;
        const auto* report = reinterpret_cast<const xcb_configure_notify_event_t*>(event);
        // The toolkit sees it after this filter.
        if (QPointer<QWidget> window = QWidget::find(report->window))
            QMetaObject::invokeMethod(
                window,
                [this, window] {
                    if (window) told_(*window);
                },
                Qt::QueuedConnection);
        return false;
    }

  private:
    std::function<void(QWidget&)> told_;
};

}  // namespace

bool HasWindowManager() {
    xcb_connection_t* connection = Connection();
    return !connection || ManagedRoot(connection) != XCB_WINDOW_NONE;
}

bool ManagerTakesDrags() {
    xcb_connection_t* connection = Connection();
    const xcb_window_t root = connection ? ManagedRoot(connection) : xcb_window_t{XCB_WINDOW_NONE};
    if (root == XCB_WINDOW_NONE) return false;
    const xcb_atom_t supported = ExistingAtom(connection, "_NET_SUPPORTED");
    const xcb_atom_t moveResize = ExistingAtom(connection, "_NET_WM_MOVERESIZE");
    if (supported == XCB_ATOM_NONE || moveResize == XCB_ATOM_NONE) return false;
    const ReplyOf<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root, supported, XCB_ATOM_ATOM, 0, kMaxSupported),
        nullptr));
    if (!reply || reply->format != 32) return false;
    const std::span atoms(static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get())),
                          size_t(xcb_get_property_value_length(reply.get())) / sizeof(xcb_atom_t));
    return std::find(atoms.begin(), atoms.end(), moveResize) != atoms.end();
}

bool StartManagerDrag(const QWidget& window, Qt::Edges edges, const QPoint& from) {
    xcb_connection_t* connection = Connection();
    if (!connection) return false;
    // Screens are scaled about their top left corners.
    const QScreen* screen = QGuiApplication::screenAt(from);
    const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
    const QPointF inScreen = QPointF(from - origin) * window.devicePixelRatioF();
    // A button that is down holds the pointer for its window.
    xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    return SendMoveResize(connection, window, MoveResizeOf(edges), origin + inScreen.toPoint());
}

void CancelManagerDrag(const QWidget& window) {
    if (xcb_connection_t* connection = Connection()) SendMoveResize(connection, window, kCancel, {});
}

void WatchReports(std::function<void(QWidget& window)> told) {
    if (Connection()) qGuiApp->installNativeEventFilter(new ReportFilter(std::move(told)));
}

bool InquireReport(const QWidget& window) {
    xcb_connection_t* connection = Connection();
    if (!connection) return false;
    const auto id = xcb_window_t(window.winId());
    const ReplyOf<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, id), nullptr));
    if (!size) return false;
    const ReplyOf<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, id, size->root, 0, 0), nullptr));
    if (!place) return false;
    xcb_configure_notify_event_t report{};
    report.response_type = XCB_CONFIGURE_NOTIFY;
    report.event = report.window = id;
    report.x = place->dst_x;
    report.y = place->dst_y;
    report.width = size->width;
    report.height = size->height;
    SendEvent(connection, id, XCB_EVENT_MASK_STRUCTURE_NOTIFY, report);
    return true;
}

bool IsLeftButtonDown() {
    xcb_connection_t* connection = Connection();
    if (!connection) return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const ReplyOf<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr));
    return pointer && (pointer->mask & XCB_BUTTON_MASK_1) != 0;
}

bool IsXwayland() {
    const QList<const QInputDevice*> devices = QInputDevice::devices();
    return std::any_of(devices.begin(), devices.end(), [](const QInputDevice* device) {
        return device->name().startsWith(QStringLiteral("xwayland-"));
    });
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
