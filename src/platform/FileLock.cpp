#include "platform/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace pixelgrove {

namespace {

bool TryLock(const Descriptor& file) {
    return flock(file.Get(), LOCK_EX | LOCK_NB) == 0;
}

}  // namespace

std::optional<FileLock> FileLock::Take(const QString& path) {
    const QByteArray name = SystemName(path);
    Descriptor file(open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!TryLock(file)) return std::nullopt;
    // Its last holder may have removed the file since it was opened; whoever comes next makes another one.
    struct stat held {};
    struct stat there {};
    const bool isThere = fstat(file.Get(), &held) == 0 && stat(name.constData(), &there) == 0 &&
                         held.st_ino == there.st_ino && held.st_dev == there.st_dev;
    if (!isThere) return std::nullopt;
    return FileLock(std::move(file));
}

std::optional<FileLock> FileLock::WaitForFolder(const QString& folder) {
    using namespace std::chrono_literals;
    Descriptor file(open(SystemName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto end = std::chrono::steady_clock::now() + 2s;
    while (!TryLock(file)) {
        const bool isTaken = errno == EWOULDBLOCK || errno == EINTR;
        if (!isTaken || std::chrono::steady_clock::now() > end) return std::nullopt;
        std::this_thread::sleep_for(5ms);
    }
    return FileLock(std::move(file));
}

}  // namespace pixelgrove
