#include "windows/widgets/DroppedFiles.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace pixelgrove {

QStringList DroppedFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.append(url.toLocalFile());
    return paths;
}

void AcceptAsCopy(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

}  // namespace pixelgrove
