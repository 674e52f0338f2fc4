// The searches that were made before, as the cache's files name them. Any thread.
#pragma once

#include <QString>
#include <QStringList>

namespace pixelgrove {

// The text of each search whose answer is in the folder, without the key and parameters that were sent with
// it; in no order, and as often as it is there.
QStringList SearchHistory(const QString& folder);

}  // namespace pixelgrove
