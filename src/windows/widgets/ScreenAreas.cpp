#include "windows/widgets/ScreenAreas.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <string>

#include "windows/PanelStruts.h"
#include "windows/widgets/XServer.h"

namespace pixelgrove {

namespace {

// The screen in device pixels. The toolkit scales a screen from its top left corner, which stays.
EdgeRect DeviceRect(const QScreen& screen) {
    const QRect rect = screen.geometry();
    const double ratio = screen.devicePixelRatio();
    return {rect.left(), rect.top(), rect.left() + RoundToInt(rect.width() * ratio),
            rect.top() + RoundToInt(rect.height() * ratio)};
}

EdgeRect LogicalRect(const EdgeRect& device, const QScreen& screen) {
    const QPoint origin = screen.geometry().topLeft();
    const double ratio = screen.devicePixelRatio();
    const auto logical = [ratio](int value, int from) { return from + RoundToInt((value - from) / ratio); };
    return {logical(device.left, origin.x()), logical(device.top, origin.y()),
            logical(device.right, origin.x()), logical(device.bottom, origin.y())};
}

// All of the X screen, which may be larger than its monitors.
EdgeRect WholeScreen() {
    xcb_connection_t* connection = XConnection();
    if (!connection) return {};
    const ReplyOf<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, RootWindow()), nullptr));
    return reply ? EdgeRect{0, 0, reply->width, reply->height} : EdgeRect{};
}

// The areas that the window manager computed, by the number of the desktop that is shown.
std::vector<EdgeRect> AreasOfManager() {
    const std::vector<uint32_t> desktop = ReadWords(RootWindow(), ExistingAtom("_NET_CURRENT_DESKTOP"));
    const std::string name = "_GTK_WORKAREAS_D" + std::to_string(desktop.empty() ? 0 : desktop[0]);
    const std::vector<uint32_t> words = ReadWords(RootWindow(), ExistingAtom(name));
    std::vector<EdgeRect> areas;
    for (size_t i = 0; i + 4 <= words.size(); i += 4) {
        const int left = int(words[i]), top = int(words[i + 1]);
        areas.push_back(
            {left, top, Saturate(int64_t{left} + words[i + 2]), Saturate(int64_t{top} + words[i + 3])});
    }
    return areas;
}

std::vector<PanelStrut> StrutsOfPanels() {
    const xcb_atom_t partial = ExistingAtom("_NET_WM_STRUT_PARTIAL"), plain = ExistingAtom("_NET_WM_STRUT");
    std::vector<PanelStrut> struts;
    for (const uint32_t window : ReadWords(RootWindow(), ExistingAtom("_NET_CLIENT_LIST"))) {
        std::vector<uint32_t> words = ReadWords(window, partial);
        if (words.size() < 12) {
            words = ReadWords(window, plain);
            if (words.size() < 4) continue;
            words.resize(4);
            for (size_t edge = 0; edge < 4; ++edge)  // along the whole edge
                words.insert(words.end(), {0, 0xffff});
        }
        PanelStrut strut;
        std::copy_n(words.begin(), strut.size(), strut.begin());
        struts.push_back(strut);
    }
    return struts;
}

}  // namespace

EdgeRect WorkAreaOf(const QScreen& screen) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    if (screens.size() < 2 || !XConnection()) return FromQRect(screen.availableGeometry());
    const EdgeRect monitor = DeviceRect(screen);
    const std::vector<EdgeRect> areas = AreasOfManager();
    if (!areas.empty()) return LogicalRect(AreaOnMonitor(monitor, areas), screen);
    return LogicalRect(AreaBesidePanels(monitor, WholeScreen(), StrutsOfPanels()), screen);
}

std::vector<EdgeRect> AllWorkAreas() {
    std::vector<EdgeRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.push_back(WorkAreaOf(*screen));
    return areas;
}

EdgeRect WorkAreaAround(const EdgeRect& rect, const QScreen* fallback) {
    const QScreen* best = fallback;
    int64_t most = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const EdgeRect common = Common(FromQRect(screen->geometry()), rect);
        if (common.IsEmpty() || common.Width() * common.Height() <= most) continue;
        most = common.Width() * common.Height();
        best = screen;
    }
    return best ? WorkAreaOf(*best) : EdgeRect{};
}

}  // namespace pixelgrove
