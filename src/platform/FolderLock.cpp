#include "platform/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/Descriptor.h"

namespace pixelgrove {

FolderLock::FolderLock(const QString& folder)
    : folder_(open(SystemName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 2s;
    while (folder_ >= 0) {
        held_ = flock(folder_, LOCK_EX | LOCK_NB) == 0;
        const bool isTaken = !held_ && (errno == EWOULDBLOCK || errno == EINTR);
        if (!isTaken || std::chrono::steady_clock::now() > end) break;
        std::this_thread::sleep_for(5ms);
    }
}

FolderLock::~FolderLock() {
    if (folder_ >= 0) close(folder_);
}

}  // namespace pixelgrove
