// What is dropped on a window. Main thread.
#pragma once

#include <QStringList>

class QMimeData;

namespace pixelgrove {

// The local files and folders among what is being dropped; other addresses are left out.
QStringList DroppedFiles(const QMimeData& data);

}  // namespace pixelgrove
