// What is dropped on a window. Main thread.
#pragma once

#include <QStringList>

class QDropEvent;
class QMimeData;

namespace pixelgrove {

// The local files and folders among what is being dropped; other addresses are left out.
QStringList DroppedFiles(const QMimeData& data);

// Takes what is dragged in or dropped, as a copy whatever the source proposes: nothing is to vanish there.
void AcceptAsCopy(QDropEvent& event);

}  // namespace pixelgrove
