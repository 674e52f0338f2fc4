// IncludeContext: in-memory include files, the folder where files are sought, and the record of what the
// current assembly expanded. AppState owns the program's one, which the main thread makes at start; each run
// assembles with one of its own that takes the search folder over, so that a run that hangs can't disturb the
// next.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>
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
    // Of the current assembly, in the form of compiler messages, "NAME(LINE): ...":
    QString failure;           // why it failed
    QStringList missingFiles;  // each #include that found no file
};

// A new context whose search folder is Shaders/Include in the data folder when that exists, else empty. After
// SetBaseFolders; main thread.
std::unique_ptr<IncludeContext> CreateIncludeContext();

}  // namespace pixelgrove
