// Walks over the files of one folder, not of its subfolders: in the order of the file system, or sorted by
// a small language of sort orders.
//
// A link counts as what it leads to. Any thread.
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <functional>
#include <vector>

namespace pixelgrove {

struct ListedFile {
    QString name;
    uint64_t size = 0;
    int64_t modifiedNs = 0;  // since 1970
    bool isFolder = false;
};

// One file of a walk; valid during the visit.
class WalkedFile {
  public:
    WalkedFile(const QString& folder, const char* systemName) : folder_(folder), name_(systemName) {}
    const char* SystemName() const { return name_; }  // bytes, for system calls
    QString Name() const;
    QString Path() const;

  private:
    const QString& folder_;
    const char* name_;
};

// False ends the walk.
using FileVisitor = std::function<bool(const WalkedFile& file)>;

// Visits every plain file. True when all were visited, also for a folder that can't be opened; false when a
// visit ended the walk, or the folder couldn't be read to its end.
bool ForEachFile(const QString& folder, const FileVisitor& visit);

// The same, sorted by a sort order; a null order is "GEN". False for a null folder too.
bool ForEachFileSorted(const QString& folder, QStringView order, const FileVisitor& visit);

// A sort order is read from left to right, in either case; each letter is a key, of which there are at most
// 16, and the first that tells two files apart decides: N the name, E what stands behind its last dot (unless
// that is its first character), S the size, its low 32 bits before its high ones, D the time of the last
// change, G folders before files. A '-' reverses the next key, but not G; other characters cancel it.
struct SortKey {
    char16_t letter;
    bool isReversed;
};

std::vector<SortKey> ParseSortOrder(QStringView order);

// Below 0 when the first comes before the second, 0 when no key tells them apart. Letters of ASCII compare
// without case.
int CompareFiles(const ListedFile& first, const ListedFile& second, const std::vector<SortKey>& keys);

}  // namespace pixelgrove
