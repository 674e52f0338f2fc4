// StringList: a bounded list of strings, the store behind the recent-file menus. Main thread.
#pragma once

#include <QStringList>

namespace pixelgrove {

struct StringList {
    static constexpr int kCapacity = 10;
    QStringList entries;  // at most kCapacity
};

}  // namespace pixelgrove
