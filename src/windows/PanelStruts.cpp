#include "windows/PanelStruts.h"

#include <algorithm>

namespace pixelgrove {

EdgeRect AreaBesidePanels(const EdgeRect& monitor, const EdgeRect& wholeScreen,
                          std::span<const PanelStrut> struts) {
    EdgeRect area = monitor;
    for (const PanelStrut& strut : struts) {
        for (size_t edge = 0; edge < 4; ++edge) {
            const int64_t depth = strut[edge];
            if (depth == 0) continue;
            const int first = Saturate(strut[4 + 2 * edge]);
            const int behind = Saturate(int64_t{strut[5 + 2 * edge]} + 1);
            const bool upright = edge < 2;
            EdgeRect strip = upright ? EdgeRect{wholeScreen.left, first, wholeScreen.right, behind}
                                     : EdgeRect{first, wholeScreen.top, behind, wholeScreen.bottom};
            if (edge == 0) strip.right = Saturate(wholeScreen.left + depth);
            if (edge == 1) strip.left = Saturate(wholeScreen.right - depth);
            if (edge == 2) strip.bottom = Saturate(wholeScreen.top + depth);
            if (edge == 3) strip.top = Saturate(wholeScreen.bottom - depth);
            const EdgeRect taken = Common(strip, monitor);
            if (taken.IsEmpty()) continue;
            if (upright ? 2 * taken.Width() > monitor.Width() : 2 * taken.Height() > monitor.Height())
                continue;
            if (edge == 0) area.left = std::max(area.left, taken.right);
            if (edge == 1) area.right = std::min(area.right, taken.left);
            if (edge == 2) area.top = std::max(area.top, taken.bottom);
            if (edge == 3) area.bottom = std::min(area.bottom, taken.top);
        }
    }
    return area.IsEmpty() ? monitor : area;
}

EdgeRect AreaOnMonitor(const EdgeRect& monitor, std::span<const EdgeRect> areas) {
    EdgeRect best;
    for (const EdgeRect& area : areas) {
        const EdgeRect common = Common(area, monitor);
        const auto size = [](const EdgeRect& rect) { return rect.Width() * rect.Height(); };
        if (!common.IsEmpty() && (best.IsEmpty() || size(common) > size(best))) best = common;
    }
    return best.IsEmpty() ? monitor : best;
}

}  // namespace pixelgrove
