// FileLock: a lock file that one process holds for as long as it lives. The kernel lets go of it when the
// process ends, however it ends, so a lock that can be taken tells that its last holder is gone; a process's
// number can't tell that, as numbers come again and mean nothing across containers.
//
// Any thread, one object by one thread at a time.
#pragma once

#include <QString>
#include <optional>
#include <utility>

namespace pixelgrove {

class FileLock {
  public:
    // Makes the file where it is missing and locks it. Nothing when it is held, also by this process, or
    // can't be made.
    static std::optional<FileLock> Take(const QString& path);

    FileLock(FileLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileLock& operator=(FileLock&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    // Lets go; the file stays. Its holder may remove it before.
    ~FileLock();

  private:
    explicit FileLock(int descriptor) : descriptor_(descriptor) {}
    int descriptor_;
};

}  // namespace pixelgrove
