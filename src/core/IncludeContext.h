// IncludeContext: in-memory include files, the folder where files are sought, and the record of what the
// current assembly expanded. One per program, owned by AppState; the render thread alone uses it while a
// run assembles, the main thread sets searchFolder before the first run.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace pixelgrove {

constexpr int kMaxIncludeRows = 64;
constexpr int kMaxIncludeDepth = 32;  // deeper nesting fails the assembly

struct VirtualInclude {
    QString name;
    QByteArray text;
};

struct IncludedFile {
    QString name;
    int depth = 0;
    int firstLine = 0;  // line of the output, from 1, on which the file's first character lands
    int endLine = 0;    // the first line after the file
};

struct IncludeContext {
    std::vector<VirtualInclude> virtualFiles;  // rebuilt for each assembly
    QString searchFolder;                      // may be empty
    std::vector<IncludedFile> includedFiles;
};

}  // namespace pixelgrove
