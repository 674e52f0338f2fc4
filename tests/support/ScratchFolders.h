// A folder of a test's own in which the program's data lies, as beside a portable copy of the program.
#pragma once

#include <QTemporaryDir>

#include "core/BaseFolders.h"

namespace pixelgrove::test {

class ScratchFolders {
  public:
    // What the program would choose if it lay in the folder.
    FolderChoice Choice() const {
        return ChooseFolders(folder_.filePath(QStringLiteral("program")), {}, QString());
    }
    // Of a file in the data folder.
    QString Path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    ScratchFolders() { SetBaseFolders(Choice()); }

  private:
    QTemporaryDir folder_;
};

}  // namespace pixelgrove::test
