// FileLock: a file or folder that one process of this program at a time holds, for as long as the object
// lives. The kernel lets go of it when the process ends, however it ends, so a lock that can be taken tells
// that its last holder is gone; a process's number can't tell that, as numbers come again and mean nothing
// across containers.
//
// Any thread, one object by one thread at a time.
#pragma once

#include <QString>
#include <optional>
#include <utility>

#include "platform/Descriptor.h"

namespace pixelgrove {

class FileLock {
  public:
    // Makes the file where it is missing and locks it. Nothing when it is held, also by this process, or
    // can't be made. Whoever lets go leaves the file; its holder may remove it before.
    static std::optional<FileLock> Take(const QString& path);

    // For whoever replaces what they read in a folder. Waits for its turn, two seconds at most: whoever holds
    // a lock for longer is stuck, and to go on without one is the lesser harm then. Nothing, at once, for a
    // folder that can't be locked.
    static std::optional<FileLock> WaitForFolder(const QString& folder);

  private:
    explicit FileLock(Descriptor held) : held_(std::move(held)) {}
    Descriptor held_;
};

}  // namespace pixelgrove
