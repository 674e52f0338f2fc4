#include "windows/widgets/WindowSystem.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QInputDevice>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "windows/widgets/XServer.h"

namespace pixelgrove {

namespace {

constexpr xcb_keysym_t kShiftLeft = 0xffe1;

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

// The window that a property names; XCB_WINDOW_NONE also when the property's own window is gone.
xcb_window_t NamedWindow(xcb_window_t window, xcb_atom_t property) {
    const std::vector<uint32_t> words = ReadWords(window, property);
    return words.empty() ? xcb_window_t{XCB_WINDOW_NONE} : words.front();
}

bool AskForMoveResize(const QWidget& window, MoveResize what, const QPoint& from) {
    if (!HasWindowManager()) return false;
    constexpr uint32_t kFromApplication = 1;
    AskManager(xcb_window_t(window.winId()), "_NET_WM_MOVERESIZE",
               {uint32_t(from.x()), uint32_t(from.y()), what, XCB_BUTTON_INDEX_1, kFromApplication});
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

// A manager that has died leaves its mark on the root window behind. Its own window has gone with it, and a
// window that got the same id since doesn't name itself.
bool HasWindowManager() {
    if (!XConnection()) return true;
    const xcb_atom_t check = ExistingAtom("_NET_SUPPORTING_WM_CHECK");
    const xcb_window_t named = NamedWindow(RootWindow(), check);
    return named != XCB_WINDOW_NONE && NamedWindow(named, check) == named;
}

bool ManagerTakesDrags() {
    return ManagerSupports({"_NET_WM_MOVERESIZE"});
}

bool StartManagerDrag(const QWidget& window, Qt::Edges edges, const QPoint& from) {
    xcb_connection_t* connection = XConnection();
    if (!connection) return false;
    // Screens are scaled about their top left corners.
    const QScreen* screen = QGuiApplication::screenAt(from);
    const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
    const QPointF inScreen = QPointF(from - origin) * window.devicePixelRatioF();
    // A button that is down holds the pointer for its window.
    xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    return AskForMoveResize(window, MoveResizeOf(edges), origin + inScreen.toPoint());
}

void CancelManagerDrag(const QWidget& window) {
    if (XConnection()) AskForMoveResize(window, kCancel, {});
}

void WatchReports(std::function<void(QWidget& window)> told) {
    if (XConnection()) qGuiApp->installNativeEventFilter(new ReportFilter(std::move(told)));
}

bool InquireReport(const QWidget& window) {
    xcb_connection_t* connection = XConnection();
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
    std::array<char, 32> bytes{};  // as all events are on the wire
    static_assert(sizeof report <= bytes.size());
    std::memcpy(bytes.data(), &report, sizeof report);
    xcb_send_event(connection, 0, id, XCB_EVENT_MASK_STRUCTURE_NOTIFY, bytes.data());
    xcb_flush(connection);
    return true;
}

bool IsLeftButtonDown() {
    xcb_connection_t* connection = XConnection();
    if (!connection) return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    const ReplyOf<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, RootWindow()), nullptr));
    return pointer && (pointer->mask & XCB_BUTTON_MASK_1) != 0;
}

bool IsXwayland() {
    const QList<const QInputDevice*> devices = QInputDevice::devices();
    return std::any_of(devices.begin(), devices.end(), [](const QInputDevice* device) {
        return device->name().startsWith(QStringLiteral("xwayland-"));
    });
}

bool IsLeftShiftDown() {
    xcb_connection_t* connection = XConnection();
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
