#include "platform/LoadedLibraries.h"

#include <link.h>

#include <QFile>

namespace pixelgrove {

QStringList LoadedLibraries() {
    QStringList paths;
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* data) {
            // The program has no name here, and the kernel's own pages have no path.
            const QString path = QFile::decodeName(info->dlpi_name);
            if (path.startsWith(u'/')) static_cast<QStringList*>(data)->append(path);
            return 0;
        },
        &paths);
    return paths;
}

}  // namespace pixelgrove
