// What panels leave of a monitor. A panel tells which strip at an edge of the whole X screen it keeps for
// itself; with several monitors a strip concerns those that it lies on. Device pixels. Pure, any thread.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "windows/EdgeRect.h"

namespace pixelgrove {

// As a panel's window states it: how far its strip reaches in from the left, right, top and bottom edge of
// the X screen, then the first and last pixel of each along its edge, in the same order. A strip of no depth
// isn't there.
using PanelStrut = std::array<uint32_t, 12>;

// The part of the monitor that no strip covers. A strip that would take more than half of the monitor is that
// of a panel on another one, which this one lies beside, and takes nothing here.
EdgeRect AreaBesidePanels(const EdgeRect& monitor, const EdgeRect& wholeScreen,
                          std::span<const PanelStrut> struts);

// The one of the areas that shares most with the monitor, cut to it; the monitor itself when none shares any.
EdgeRect AreaOnMonitor(const EdgeRect& monitor, std::span<const EdgeRect> areas);

}  // namespace pixelgrove
