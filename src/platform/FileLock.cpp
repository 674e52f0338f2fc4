#include "platform/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Descriptor.h"

namespace pixelgrove {

std::optional<FileLock> FileLock::Take(const QString& path) {
    const QByteArray name = SystemName(path);
    FileLock lock(open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock.descriptor_ < 0 || flock(lock.descriptor_, LOCK_EX | LOCK_NB) != 0) return std::nullopt;
    // Its last holder may have removed the file since it was opened; whoever comes next makes another one.
    struct stat held {};
    struct stat there {};
    const bool isThere = fstat(lock.descriptor_, &held) == 0 && stat(name.constData(), &there) == 0 &&
                         held.st_ino == there.st_ino && held.st_dev == there.st_dev;
    if (!isThere) return std::nullopt;
    return lock;
}

FileLock::~FileLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace pixelgrove
