// How rectangles look in a failed test's message.
#pragma once

#include <ostream>

#include "windows/DialogScaling.h"

namespace pixelgrove {

inline void PrintTo(const EdgeRect& r, std::ostream* out) {
    *out << "{" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << "}";
}

inline void PrintTo(const FontSize& f, std::ostream* out) {
    *out << f.height << "x" << f.width;
}

}  // namespace pixelgrove
