#include "platform/SharedMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

namespace pixelgrove {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

bool IsOfThisUserAlone(const struct stat& info) {
    return S_ISREG(info.st_mode) && info.st_uid == geteuid() && (info.st_mode & 07777) == kOwnerOnly;
}

int OpenBlock(const char* name) {
    const int made = shm_open(name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly);
    if (made < 0) return errno == EEXIST ? shm_open(name, O_RDWR | O_CLOEXEC, 0) : -1;
    fchmod(made, kOwnerOnly);  // whatever the umask took away
    return made;
}

}  // namespace

// Takes the descriptor over, also when the result is null.
std::unique_ptr<SharedMemory> SharedMemory::Adopt(int descriptor, size_t sizeBytes) {
    if (descriptor < 0) return nullptr;
    std::unique_ptr<SharedMemory> memory(new (std::nothrow) SharedMemory(descriptor));
    if (!memory) {
        close(descriptor);
        return nullptr;
    }
    // Only ever grown: another process may use all of a larger block.
    struct stat info {};
    if (fstat(descriptor, &info) != 0) return nullptr;
    if (info.st_size < off_t(sizeBytes) && ftruncate(descriptor, off_t(sizeBytes)) != 0) return nullptr;
    return memory;
}

std::unique_ptr<SharedMemory> SharedMemory::CreateOrOpen(const char* name, size_t sizeBytes) {
    const int descriptor = OpenBlock(name);
    struct stat info {};
    if (descriptor >= 0 && (fstat(descriptor, &info) != 0 || !IsOfThisUserAlone(info))) {
        close(descriptor);
        return nullptr;
    }
    return Adopt(descriptor, sizeBytes);
}

std::unique_ptr<SharedMemory> SharedMemory::CreatePrivate(size_t sizeBytes) {
    return Adopt(memfd_create("pixelgrove", MFD_CLOEXEC), sizeBytes);
}

SharedMemory::~SharedMemory() {
    close(descriptor_);
}

bool SharedMemory::Read(void* to, size_t bytes) const {
    for (size_t done = 0; done < bytes;) {
        const ssize_t got = pread(descriptor_, static_cast<char*>(to) + done, bytes - done, off_t(done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        done += size_t(got);
    }
    return true;
}

}  // namespace pixelgrove
