// An agreement among the processes of this program that one of them at a time replaces what it read in a
// folder.
//
// Any thread, one at a time for each lock.
#pragma once

#include <QString>

namespace pixelgrove {

class FolderLock {
  public:
    // Waits for its turn, two seconds at most: whoever holds a lock for longer is stuck, and to go on without
    // one is the lesser harm then. A folder that can't be locked is not waited for.
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    bool IsHeld() const { return held_; }

  private:
    int folder_;
    bool held_ = false;
};

}  // namespace pixelgrove
